#include "support/Programs.h"

QString commandLineProgram()
{
    return QStringLiteral(QUIREVAULT_PROGRAM);
}

QString pdfEngineProgram()
{
    return QStringLiteral(QUIREVAULT_ENGINE_PROGRAM);
}

QString desktopProgram()
{
    return QStringLiteral(QUIREVAULT_DESKTOP_PROGRAM);
}

QString searchProviderProgram()
{
    return QStringLiteral(QUIREVAULT_SEARCH_PROVIDER);
}

QString appcastItemTool()
{
    return QStringLiteral(QUIREVAULT_TOOLS_FOLDER "/appcast-item");
}
