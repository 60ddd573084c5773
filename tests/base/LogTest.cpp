#include "base/Log.h"

#include "support/Printing.h"

#include <gtest/gtest.h>

TEST(LogTest, WritesOneLineToStandardOutput)
{
    testing::internal::CaptureStdout();
    logLine(QStringLiteral("Component: it happened"));
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Component: it happened\n");
}

TEST(LogTest, KeepsAMessageWithLineBreaksOnOneLine)
{
    testing::internal::CaptureStdout();
    logLine(QStringLiteral("failed: [a\nb\u2028c\x1b[2J.pdf]"));
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "failed: [a b c [2J.pdf]\n");
}

TEST(LogTest, GoesToStandardErrorWhereStandardOutputHoldsAnAnswer)
{
    setLogTarget(LogTarget::StandardError);
    testing::internal::CaptureStderr();
    logLine(QStringLiteral("aside"));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "aside\n");
    setLogTarget(LogTarget::StandardOutput);
}
