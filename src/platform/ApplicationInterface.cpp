#include "platform/ApplicationInterface.h"

#include "platform/Paths.h"
#include "platform/Sha256.h"

#include <QDir>
#include <QFile>

QString applicationBusName(const QString &dataFolder)
{
    const auto name = QString::fromLatin1(kApplicationId);
    const QString folder = QDir::cleanPath(dataFolder);
    if (folder == QDir::cleanPath(defaultDataFolder()))
        return name;
    constexpr int kHashDigits = 16;
    return name + u".Library_" + sha256Hex(QFile::encodeName(folder)).left(kHashDigits);
}
