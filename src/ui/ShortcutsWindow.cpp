#include "ui/ShortcutsWindow.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <array>

namespace
{
struct Shortcut {
    const char *group;
    const char *what;
    const char *keys; ///< portable text of a key sequence
};

constexpr std::array kShortcuts = {
    Shortcut{"Everywhere", "Open the library", "Ctrl+L"},
    Shortcut{"Everywhere", "Find in the library", "Ctrl+F"},
    Shortcut{"Everywhere", "Import PDFs", "Ctrl+I"},
    Shortcut{"Everywhere", "Refresh the library", "F5"},
    Shortcut{"Everywhere", "Show or hide the sidebar", "F9"},
    Shortcut{"Everywhere", "Show or hide the details", "F8"},
    Shortcut{"Everywhere", "Full screen", "F11"},
    Shortcut{"Everywhere", "Close the window", "Ctrl+W"},
    Shortcut{"Everywhere", "Quit", "Ctrl+Q"},
    Shortcut{"Papers", "Move among the papers", "Arrow keys"},
    Shortcut{"Papers", "Find a paper by its title", "Type its first letters"},
    Shortcut{"Papers", "Open the paper", "Return"},
    Shortcut{"Papers", "Show or hide the details", "Space"},
    Shortcut{"Papers", "Edit title, authors and year", "F2"},
    Shortcut{"Papers", "Add a tag", "Ctrl+T"},
    Shortcut{"Papers", "Remove from the library", "Delete"},
    Shortcut{"Search field", "Go to what was found", "Return or Down"},
    Shortcut{"Search field", "Clear, and go back to the papers", "Escape"},
};

void fill(QTreeWidget *list)
{
    QTreeWidgetItem *group = nullptr;
    for (const Shortcut &shortcut : kShortcuts) {
        const QString groupName = QLatin1String(shortcut.group);
        if (!group || group->text(0) != groupName) {
            group = new QTreeWidgetItem(list, {groupName});
            group->setFirstColumnSpanned(true);
            QFont bold = list->font();
            bold.setBold(true);
            group->setFont(0, bold);
        }
        new QTreeWidgetItem(group, {QLatin1String(shortcut.what), QLatin1String(shortcut.keys)});
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
