#include "reader/ReaderSymbols.h"

#include "reader/ThemeIcon.h"

#include <array>

namespace
{
// In the order of `ReaderSymbol`; freedesktop names where there is one that reads right, else Breeze's.
constexpr std::array kThemeNames = {
    "go-previous",           // Back
    "go-next",               // Forward
    "zoom-out",              // ZoomOut
    "zoom-original",         // ActualSize
    "zoom-in",               // ZoomIn
    "zoom-fit-width",        // FitWidth
    "zoom-fit-page",         // FitPage
    "bookmark-new",          // BookmarkSelection
    "sidebar-collapse-left", // Sidebar
    "contrast",              // DarkMode
    "object-rotate-left",    // RotateLeft
    "object-rotate-right",   // RotateRight
    "document-print",        // Print
    "application-menu",      // More
    "edit-find",             // Search
    "view-list-tree",        // Outline
    "bookmarks",             // Bookmarks
    "data-warning",          // Warning
    "data-warning",          // MissingFile
    "object-locked",         // Locked
};
static_assert(kThemeNames.size() == static_cast<std::size_t>(ReaderSymbol::Locked) + 1);
} // namespace

QIcon blankIcon()
{
    QPixmap nothing(1, 1);
    nothing.fill(Qt::transparent);
    return QIcon(nothing);
}

QIcon readerIcon(ReaderSymbol symbol)
{
    return themeIcon(QString::fromLatin1(kThemeNames.at(static_cast<std::size_t>(symbol))));
}
