#pragma once

#include <QString>

// The executables under test, as they were built beside the tests.
QString commandLineProgram();
QString pdfEngineProgram();
QString desktopProgram();
QString searchProviderProgram();
