#include "pdf/EngineProgram.h"

#include "platform/Paths.h"
#include "support/Printing.h"

#include <QFile>
#include <gtest/gtest.h>

TEST(EngineProgram, IsWhatTheEnvironmentNames)
{
    qputenv("QUIREVAULT_PDF_ENGINE", "/some/engine");
    EXPECT_EQ(engineProgram(), QStringLiteral("/some/engine"));
    qunsetenv("QUIREVAULT_PDF_ENGINE");
}

TEST(EngineProgram, LiesBesideTheProgramThatRuns)
{
    qunsetenv("QUIREVAULT_PDF_ENGINE");
    EXPECT_EQ(engineProgram(), QString(programFolder() + u"/quirevault-pdf-engine"));
    EXPECT_TRUE(QFile::exists(engineProgram()));
}
