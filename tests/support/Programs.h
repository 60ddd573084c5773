#pragma once

#include <QString>

// The executables under test, as they were built beside the tests.
QString commandLineProgram();
QString pdfEngineProgram();
QString desktopProgram();
QString searchProviderProgram();

/// The script that signs a release for the update feed.
QString appcastItemTool();
