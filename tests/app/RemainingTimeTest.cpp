#include "app/RemainingTime.h"

#include "support/Printing.h"

#include <gtest/gtest.h>

TEST(RemainingTime, IsNeverZeroSeconds)
{
    EXPECT_EQ(formatRemainingTime(0), u"~1s remaining");
    EXPECT_EQ(formatRemainingTime(0.4), u"~1s remaining");
}

TEST(RemainingTime, CutsFractionsBelowAMinute)
{
    EXPECT_EQ(formatRemainingTime(59.9), u"~59s remaining");
}

TEST(RemainingTime, LeavesOutZeroSecondsBesideMinutes)
{
    EXPECT_EQ(formatRemainingTime(60), u"~1m remaining");
    EXPECT_EQ(formatRemainingTime(120), u"~2m remaining");
}

TEST(RemainingTime, GivesMinutesAndSecondsAndNoHours)
{
    EXPECT_EQ(formatRemainingTime(125.7), u"~2m 5s remaining");
    EXPECT_EQ(formatRemainingTime(3700), u"~61m 40s remaining");
}
