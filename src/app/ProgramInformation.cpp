#include "app/ProgramInformation.h"

QString programVersion()
{
    return QStringLiteral(QUIREVAULT_VERSION);
}

QString programBuild()
{
    return QStringLiteral(QUIREVAULT_BUILD);
}
