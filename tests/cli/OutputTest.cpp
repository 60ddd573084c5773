#include "cli/Output.h"

#include "support/Printing.h"

#include <QJsonArray>
#include <gtest/gtest.h>

TEST(OutputTest, AnswersGoToStandardOutputAndFailuresToStandardError)
{
    const Output output(Output::Form::Text);
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    output.line(QStringLiteral("an answer"));
    output.failure(QStringLiteral("/a\nb.pdf: broken"));
    output.progress(QStringLiteral("1/2"));
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "an answer\n");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "quirevault: /a b.pdf: broken\n");
}

TEST(OutputTest, UsesNoColoursOutsideATerminal)
{
    testing::internal::CaptureStdout(); // a file, not a terminal
    const Output output(Output::Form::Text);
    EXPECT_EQ(output.emphasised(QStringLiteral("word")), u"word");
    EXPECT_EQ(output.dimmed(QStringLiteral("word")), u"word");
    testing::internal::GetCapturedStdout();
}
