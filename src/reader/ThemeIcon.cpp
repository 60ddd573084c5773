#include "reader/ThemeIcon.h"

#include <QFile>
#include <QGuiApplication>
#include <QPalette>
#include <QStandardPaths>

namespace
{
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

// Without a desktop there is no theme, or one that holds next to nothing.
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

QIcon themeIcon(const QString &name)
{
    [[maybe_unused]] static const bool once = (searchInstalledThemes(), true);
    chooseTheme();
    return QIcon::hasThemeIcon(name) ? QIcon::fromTheme(name) : breezeFile(name);
}

QIcon programIcon()
{
    return themeIcon(QGuiApplication::desktopFileName());
}
