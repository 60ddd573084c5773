#include "ui/LibraryToolBar.h"

#include "app/LibraryCommands.h"
#include "app/LibraryViewModel.h"
#include "ui/ActionText.h"
#include "ui/Symbols.h"
#include "ui/WindowCommands.h"

#include <QMenu>
#include <QToolButton>

LibraryToolBar::LibraryToolBar(LibraryViewModel &vm, const LibraryCommands &commands,
                               const WindowCommands &windowCommands, QWidget *parent)
    : QToolBar(QStringLiteral("Library"), parent)
    , m_vm(vm)
{
    setObjectName(QStringLiteral("libraryToolBar"));
    setMovable(false);
    setContextMenuPolicy(Qt::PreventContextMenu); // it would offer to hide the bar
    setIconSize({16, 16});
    setToolButtonStyle(Qt::ToolButtonTextBesideIcon);

    commands.importPDFs->setIcon(symbolIcon(Symbol::Import));
    commands.refresh->setIcon(symbolIcon(Symbol::Refresh));
    addAction(commands.importPDFs);
    addAction(commands.refresh);
    addSeparator();
    QMenu *tag = addMenuButton(QStringLiteral("Tag All Visible"),
                               QStringLiteral("Apply a tag to all visible papers"), symbolIcon(Symbol::Tag));
    connect(tag, &QMenu::aboutToShow, this,
            [this, tag, tagAll = windowCommands.tagAll] { fillTagMenu(tag, tagAll); });
    QMenu *remove =
        addMenuButton(QStringLiteral("Remove Tag"), QStringLiteral("Remove a tag from all visible papers"),
                      symbolIcon(Symbol::RemoveTag));
    connect(remove, &QMenu::aboutToShow, this, [this, remove] { fillRemoveMenu(remove); });

    auto *space = new QWidget(this);
    space->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    addWidget(space);
    addAction(windowCommands.showDetails);
}

QMenu *LibraryToolBar::addMenuButton(const QString &title, const QString &toolTip, const QIcon &icon)
{
    auto *menu = new QMenu(title, this);
    menu->setIcon(icon);
    menu->menuAction()->setToolTip(toolTip);
    addAction(menu->menuAction());
    auto *button = qobject_cast<QToolButton *>(widgetForAction(menu->menuAction()));
    button->setPopupMode(QToolButton::InstantPopup);
    button->setAccessibleDescription(toolTip);
    return menu;
}

void LibraryToolBar::fillTagMenu(QMenu *menu, QAction *tagAll)
{
    menu->clear();
    menu->addAction(tagAll);
    menu->addSeparator();
    const QStringList tags = m_vm.visibleTags;
    for (const QString &tag : tags)
        menu->addAction(asActionText(tag), this, [this, tag] { m_vm.tagVisiblePapers(tag); });
}

void LibraryToolBar::fillRemoveMenu(QMenu *menu)
{
    menu->clear();
    const QStringList tags = m_vm.tagsOnVisiblePapers();
    for (const QString &tag : tags)
        menu->addAction(asActionText(tag), this, [this, tag] { m_vm.removeTagFromVisiblePapers(tag); });
    if (tags.isEmpty())
        menu->addAction(QStringLiteral("No tags on visible papers"))->setEnabled(false);
}
