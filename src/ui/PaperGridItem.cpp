#include "ui/PaperGridItem.h"

#include "app/LibraryViewModel.h"
#include "ui/ActionText.h"
#include "ui/CardWords.h"
#include "ui/Symbols.h"

#include <QAction>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>

namespace
{
void addReadingAction(QMenu &menu, LibraryViewModel &vm, const Paper &paper)
{
    const bool isReading = isCurrentlyReading(paper);
    const QString text =
        isReading ? QStringLiteral("Stop Reading") : QStringLiteral("Mark as Currently Reading");
    QAction *action = menu.addAction(text);
    action->setObjectName(QStringLiteral("toggleReading"));
    QObject::connect(action, &QAction::triggered, &vm,
                     [&vm, id = paper.id, isReading] { vm.setCurrentlyReading(id, !isReading); });
}

void addRemoveTagAction(QMenu &menu, LibraryViewModel &vm, const Paper &paper)
{
    const SidebarItem selected = vm.currentSidebarItem;
    if (!selected.isTag())
        return;
    QAction *action =
        menu.addAction(symbolIcon(Symbol::RemoveTag), u"Remove from " + asActionText(selected.tag));
    action->setObjectName(QStringLiteral("removeFromTag"));
    QObject::connect(action, &QAction::triggered, &vm,
                     [&vm, id = paper.id, tag = selected.tag] { vm.removeTag(id, tag); });
}
} // namespace

QMenu *PaperGridItem::makeContextMenu(QWidget *parent, const std::function<void()> &onRemove) const
{
    auto *menu = new QMenu(parent);
    menu->setObjectName(QStringLiteral("paperMenu"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    addReadingAction(*menu, vm, paper);
    addRemoveTagAction(*menu, vm, paper);
    menu->addSeparator();
    QAction *remove = menu->addAction(symbolIcon(Symbol::Delete), QStringLiteral("Remove from Library"));
    remove->setObjectName(QStringLiteral("removeFromLibrary"));
    QObject::connect(remove, &QAction::triggered, parent, onRemove);
    return menu;
}

QMessageBox *PaperGridItem::confirmRemoval(QWidget *window) const
{
    auto *alert = new QMessageBox(window);
    alert->setObjectName(QStringLiteral("removePaperAlert"));
    alert->setAttribute(Qt::WA_DeleteOnClose);
    alert->setIcon(QMessageBox::Warning);
    alert->setTextFormat(Qt::PlainText); // a title may look like markup
    alert->setText(u"Remove \"" + paper.title + u"\" from your library?");
    alert->setInformativeText(QStringLiteral("This will delete the paper's metadata, tags, and AI index. The "
                                             "PDF file itself will not be deleted."));
    const QPushButton *remove = alert->addButton(QStringLiteral("Remove"), QMessageBox::DestructiveRole);
    alert->setDefaultButton(alert->addButton(QStringLiteral("Cancel"), QMessageBox::RejectRole));
    QObject::connect(remove, &QPushButton::clicked, &vm,
                     [&vm = vm, paper = paper] { vm.deletePaper(paper); });
    alert->open();
    return alert;
}
