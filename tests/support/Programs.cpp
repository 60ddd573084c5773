#include "support/Programs.h"

QString commandLineProgram()
{
    return QStringLiteral(QUIREVAULT_PROGRAM);
}

QString pdfEngineProgram()
{
    return QStringLiteral(QUIREVAULT_ENGINE_PROGRAM);
}

QString appcastItemTool()
{
    return QStringLiteral(QUIREVAULT_TOOLS_FOLDER "/appcast-item");
}
