#include "ui/Symbols.h"

#include <QFile>
#include <QGuiApplication>
#include <QPalette>
#include <QStandardPaths>
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

QString breeze()
{
    const bool isDark = QGuiApplication::palette().color(QPalette::Window).lightness() < 128;
    return isDark ? QStringLiteral("breeze-dark") : QStringLiteral("breeze");
}

// Qt looks for themes nowhere when no desktop tells it where they are.
void searchInstalledThemes()
{
    QStringList paths = QIcon::themeSearchPaths();
    const QStringList installed = QStandardPaths::locateAll(
        QStandardPaths::GenericDataLocation, QStringLiteral("icons"), QStandardPaths::LocateDirectory);
    for (const QString &path : installed) {
        if (!paths.contains(path))
            paths.append(path);
    }
    if (paths != QIcon::themeSearchPaths())
        QIcon::setThemeSearchPaths(paths);
}

// Without a desktop there is no theme, or one that holds next to nothing. Asked at each call, because a
// desktop may change between light and dark while the program runs.
void chooseTheme()
{
    const QString theme = QIcon::themeName();
    const bool isOurs =
        theme.isEmpty() || theme == u"hicolor" || theme == u"breeze" || theme == u"breeze-dark";
    if (isOurs && theme != breeze())
        QIcon::setThemeName(breeze());
}

// Qt's own fall-back theme is not asked when the desktop's theme names a parent, as nearly all do.
QIcon breezeFile(const QString &name)
{
    const QStringList searchPaths = QIcon::themeSearchPaths();
    for (const QString &path : searchPaths) {
        for (const auto *folder :
             {"actions/22/", "actions/16/", "places/22/", "mimetypes/64/", "status/22/"}) {
            const QString file = path + u'/' + breeze() + u'/' + QLatin1String(folder) + name + u".svg";
            if (QFile::exists(file))
                return QIcon(file);
        }
    }
    return {};
}
} // namespace

QIcon symbolIcon(Symbol symbol)
{
    [[maybe_unused]] static const bool once = (searchInstalledThemes(), true);
    chooseTheme();
    const auto name = QString::fromLatin1(kThemeNames.at(static_cast<std::size_t>(symbol)));
    return QIcon::hasThemeIcon(name) ? QIcon::fromTheme(name) : breezeFile(name);
}
