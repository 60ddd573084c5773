#include "ui/ShortcutsWindow.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <array>

namespace
{
struct Shortcut {
    const char16_t *group;
    const char16_t *what;
    const char16_t *keys; ///< portable text of a key sequence
};

constexpr std::array kShortcuts = {
    Shortcut{u"Everywhere", u"Open the library", u"Ctrl+L"},
    Shortcut{u"Everywhere", u"Find in the library", u"Ctrl+F"},
    Shortcut{u"Everywhere", u"Import PDFs", u"Ctrl+I"},
    Shortcut{u"Everywhere", u"Refresh the library", u"F5"},
    Shortcut{u"Everywhere", u"Show or hide the sidebar", u"F9"},
    Shortcut{u"Everywhere", u"Show or hide the details", u"F8"},
    Shortcut{u"Everywhere", u"Full screen", u"F11"},
    Shortcut{u"Everywhere", u"Close the window", u"Ctrl+W"},
    Shortcut{u"Everywhere", u"Quit", u"Ctrl+Q"},
    Shortcut{u"Papers", u"Move among the papers", u"Arrow keys"},
    Shortcut{u"Papers", u"Find a paper by its title", u"Type its first letters"},
    Shortcut{u"Papers", u"Open the paper", u"Return"},
    Shortcut{u"Papers", u"Show or hide the details", u"Space"},
    Shortcut{u"Papers", u"Edit title, authors and year", u"F2"},
    Shortcut{u"Papers", u"Add a tag", u"Ctrl+T"},
    Shortcut{u"Papers", u"Remove from the library", u"Delete"},
    Shortcut{u"Search field", u"Go to what was found", u"Return or Down"},
    Shortcut{u"Search field", u"Clear, and go back to the papers", u"Escape"},
};

void fill(QTreeWidget *list)
{
    QTreeWidgetItem *group = nullptr;
    for (const Shortcut &shortcut : kShortcuts) {
        const QString groupName(shortcut.group);
        if (!group || group->text(0) != groupName) {
            group = new QTreeWidgetItem(list, {groupName});
            group->setFirstColumnSpanned(true);
            QFont bold = list->font();
            bold.setBold(true);
            group->setFont(0, bold);
        }
        new QTreeWidgetItem(group, {QString(shortcut.what), QString(shortcut.keys)});
    }
    list->expandAll();
    list->resizeColumnToContents(0);
}
} // namespace

ShortcutsWindow::ShortcutsWindow(QWidget *parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("shortcutsWindow"));
    setWindowTitle(QStringLiteral("Keyboard Shortcuts"));
    setAttribute(Qt::WA_DeleteOnClose);

    auto *list = new QTreeWidget(this);
    list->setObjectName(QStringLiteral("shortcutsList"));
    list->setAccessibleName(windowTitle());
    list->setHeaderLabels({QStringLiteral("Command"), QStringLiteral("Keys")});
    list->setRootIsDecorated(false);
    list->setItemsExpandable(false);
    list->setIndentation(12);
    fill(list);

    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(list);
    layout->addWidget(buttons);
    resize(460, 560);
}
