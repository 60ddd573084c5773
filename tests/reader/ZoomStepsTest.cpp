#include "reader/ZoomSteps.h"

#include <gtest/gtest.h>

TEST(ZoomSteps, LeadUpAndDownThroughTheSameScales)
{
    EXPECT_DOUBLE_EQ(nextLargerScale(1), 1.1);
    EXPECT_DOUBLE_EQ(nextSmallerScale(1.1), 1);
    EXPECT_DOUBLE_EQ(nextLargerScale(1.37), 1.5);
    EXPECT_DOUBLE_EQ(nextSmallerScale(1.37), 1.25);
}

TEST(ZoomSteps, TakeAScaleNearAStepForIt)
{
    EXPECT_DOUBLE_EQ(nextLargerScale(1.2499), 1.5);
    EXPECT_DOUBLE_EQ(nextSmallerScale(1.2501), 1.1);
}

TEST(ZoomSteps, EndSomewhere)
{
    EXPECT_DOUBLE_EQ(nextLargerScale(12), 12);
    EXPECT_DOUBLE_EQ(nextSmallerScale(0.1), 0.1);
}
