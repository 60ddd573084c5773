#include "platform/Paths.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

QString dataFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + u"/Quirevault";
}

QString defaultDataFolder()
{
    return QDir::homePath() + u"/.local/share/Quirevault";
}

QString libraryDatabasePath()
{
    return dataFolder() + u"/library.db";
}

QString coversFolder()
{
    return dataFolder() + u"/covers";
}

QString sessionFilePath()
{
    return dataFolder() + u"/session.json";
}

QString systemSearchPath()
{
    return dataFolder() + u"/system-search.db";
}

QString downloadsFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::DownloadLocation);
}

QString programFolder()
{
    // Unlike the name in argv, this holds whatever the program was started as.
    return QFileInfo(QFileInfo(QStringLiteral("/proc/self/exe")).symLinkTarget()).path();
}

QString companionProgram(const QString &name)
{
    const QString folder = programFolder();
    const QString beside = folder + u'/' + name;
    if (QFile::exists(beside))
        return beside;
    return QDir::cleanPath(folder + u"/../libexec/quirevault/" + name);
}

QString pathForPeople(const QString &path)
{
    const QString home = QDir::homePath();
    const bool isInHome =
        home.size() > 1 && path.startsWith(home) && (path.size() == home.size() || path[home.size()] == u'/');
    return isInHome ? QString(u"~" + QStringView(path).mid(home.size())) : path;
}
