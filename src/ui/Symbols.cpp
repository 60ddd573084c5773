#include "ui/Symbols.h"

#include "reader/ThemeIcon.h"

#include <array>

namespace
{
// In the order of `Symbol`; freedesktop names where there is one that reads right, else Breeze's.
constexpr std::array kThemeNames = {
    "folder-library",         // AllPapers
    "view-readermode",        // CurrentlyReading
    "document-open-recent",   // RecentlyImported
    "tag",                    // Tag
    "tag-new",                // NewTag
    "tag-delete",             // RemoveTag
    "edit-rename",            // Rename
    "edit-delete",            // Delete
    "edit-find",              // Search
    "edit-clear",             // ClearText
    "document-import",        // Import
    "view-refresh",           // Refresh
    "sidebar-collapse-right", // DetailPanel
    "sidebar-collapse-left",  // Sidebar
    "view-pages-single",      // Document
    "document-preview",       // DocumentSearch
    "data-warning",           // MissingFile
    "document-open",          // OpenExternally
    "document-open-folder",   // ShowInFolder
    "edit-copy",              // Copy
};
static_assert(kThemeNames.size() == static_cast<std::size_t>(Symbol::Copy) + 1);
} // namespace

QIcon symbolIcon(Symbol symbol)
{
    return themeIcon(QString::fromLatin1(kThemeNames.at(static_cast<std::size_t>(symbol))));
}
