#include "reader/Fonts.h"

#include <gtest/gtest.h>

TEST(Fonts, AreScaledInTheUnitOfTheirSize)
{
    QFont inPoints;
    inPoints.setPointSizeF(10);
    EXPECT_EQ(scaledFont(inPoints, 1.4).pointSizeF(), 14);
    QFont inPixels;
    inPixels.setPixelSize(20);
    EXPECT_EQ(scaledFont(inPixels, 1.4).pixelSize(), 28);
    EXPECT_EQ(scaledFont(inPixels, 1.4).pointSizeF(), -1);
    EXPECT_TRUE(boldFont(inPixels, 0.9).bold());
    EXPECT_EQ(boldFont(inPixels, 0.9).pixelSize(), 18);
}
