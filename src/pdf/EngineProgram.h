#pragma once

#include <QString>

/// The engine's executable: what $QUIREVAULT_PDF_ENGINE names, else the one beside the running program, else
/// the one in ../libexec/quirevault from there. The last is answered even where it does not exist.
QString engineProgram();
