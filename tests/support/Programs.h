#pragma once

#include <QString>

// The executables under test, as they were built beside the tests.
QString commandLineProgram();
QString pdfEngineProgram();

/// The script that signs a release for the update feed.
QString appcastItemTool();
