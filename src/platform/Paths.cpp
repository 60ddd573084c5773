#include "platform/Paths.h"

#include <QFileInfo>
#include <QStandardPaths>

QString dataFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + u"/Quirevault";
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

QString programFolder()
{
    // Unlike the name in argv, this holds whatever the program was started as.
    return QFileInfo(QFileInfo(QStringLiteral("/proc/self/exe")).symLinkTarget()).path();
}
