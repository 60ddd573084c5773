#include "ui/WindowCommands.h"

#include "app/LibraryCommands.h"
#include "ui/Symbols.h"

#include <optional>

namespace
{
QAction *checkable(QAction *action, std::optional<Symbol> symbol = {})
{
    action->setCheckable(true);
    if (symbol)
        action->setIcon(symbolIcon(*symbol));
    return action;
}
} // namespace

WindowCommands::WindowCommands(QObject *parent)
    : QObject(parent)
    , close(actionNamed(QStringLiteral("close"), QStringLiteral("Close"), this, Qt::CTRL | Qt::Key_W))
    , showSidebar(
          checkable(actionNamed(QStringLiteral("show-sidebar"), QStringLiteral("Sidebar"), this, Qt::Key_F9),
                    Symbol::Sidebar))
    , showDetails(
          checkable(actionNamed(QStringLiteral("show-details"), QStringLiteral("Details"), this, Qt::Key_F8),
                    Symbol::DetailPanel))
    , fullScreen(checkable(
          actionNamed(QStringLiteral("full-screen"), QStringLiteral("Full Screen"), this, Qt::Key_F11)))
    , shortcuts(actionNamed(QStringLiteral("keyboard-shortcuts"), QStringLiteral("Keyboard Shortcuts"), this,
                            Qt::Key_F1))
    , tagAll(actionNamed(QStringLiteral("tag-all"), QStringLiteral("Tag All…"), this))
{
    showDetails->setIconText(QStringLiteral("Toggle details"));
    showDetails->setToolTip(QStringLiteral("Toggle details"));
    tagAll->setIcon(symbolIcon(Symbol::NewTag));
}
