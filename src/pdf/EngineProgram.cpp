#include "pdf/EngineProgram.h"

#include "platform/Paths.h"

QString engineProgram()
{
    const QString chosen = qEnvironmentVariable("QUIREVAULT_PDF_ENGINE");
    return chosen.isEmpty() ? companionProgram(QStringLiteral("quirevault-pdf-engine")) : chosen;
}
