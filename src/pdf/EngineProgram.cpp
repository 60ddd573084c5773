#include "pdf/EngineProgram.h"

#include "platform/Paths.h"

#include <QDir>
#include <QFile>

QString engineProgram()
{
    const QString chosen = qEnvironmentVariable("QUIREVAULT_PDF_ENGINE");
    if (!chosen.isEmpty())
        return chosen;
    const QString folder = programFolder();
    const QString beside = folder + u"/quirevault-pdf-engine";
    if (QFile::exists(beside))
        return beside;
    return QDir::cleanPath(folder + u"/../libexec/quirevault/quirevault-pdf-engine");
}
