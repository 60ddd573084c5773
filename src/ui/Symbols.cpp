#include "ui/Symbols.h"

#include <QGuiApplication>
#include <QPalette>
#include <array>

namespace
{
// In the order of `Symbol`.
constexpr std::array kThemeNames = {
    "folder-documents", "view-readermode", "document-open-recent", "tag",           "tag-new",
    "tag-delete",       "document-edit",   "edit-delete",          "edit-find",     "edit-clear",
    "document-import",  "view-refresh",    "view-right-new",       "view-left-new", "text-x-generic",
    "edit-find",        "dialog-warning",  "document-open",        "folder-open",   "edit-copy",
};
} // namespace

QIcon symbolIcon(Symbol symbol)
{
    // Set at each call: a desktop may change between light and dark while the program runs.
    const bool isDark = QGuiApplication::palette().color(QPalette::Window).lightness() < 128;
    QIcon::setFallbackThemeName(isDark ? QStringLiteral("breeze-dark") : QStringLiteral("breeze"));
    return QIcon::fromTheme(QLatin1String(kThemeNames.at(static_cast<std::size_t>(symbol))));
}
