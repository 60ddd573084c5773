#pragma once

#include <QString>

/// The engine's executable: what $QUIREVAULT_PDF_ENGINE names, else the `companionProgram`.
QString engineProgram();
