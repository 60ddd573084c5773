#include "ui/FlowArrangement.h"

#include <gtest/gtest.h>

namespace
{
constexpr int kSpacing = 6;
const QSize kChip{70, 20};
} // namespace

TEST(FlowArrangement, PutsItemsSideBySideWhileTheyFit)
{
    const auto arrangement = arrangeInRows({kChip, kChip}, 146, kSpacing); // 70 + 6 + 70
    EXPECT_EQ(arrangement.frames, (QList<QRect>{{{0, 0}, kChip}, {{76, 0}, kChip}}));
    EXPECT_EQ(arrangement.total, QSize(146, 20));
}

TEST(FlowArrangement, WrapsAnItemThatIsAPixelTooWide)
{
    const auto arrangement = arrangeInRows({kChip, kChip}, 145, kSpacing);
    EXPECT_EQ(arrangement.frames.at(1).topLeft(), QPoint(0, 26));
    EXPECT_EQ(arrangement.total, QSize(145, 46));
}

TEST(FlowArrangement, IsAsWideAsWasOfferedWhateverTheRowsUse)
{
    EXPECT_EQ(arrangeInRows({kChip}, 500, kSpacing).total, QSize(500, 20));
    EXPECT_EQ(arrangeInRows({}, 500, kSpacing).total, QSize(500, 0));
}

TEST(FlowArrangement, KeepsASingleItemThatIsTooWideOnTheFirstRow)
{
    const auto arrangement = arrangeInRows({{300, 33}}, 100, kSpacing);
    EXPECT_EQ(arrangement.frames, (QList<QRect>{{0, 0, 300, 33}}));
    EXPECT_EQ(arrangement.total, QSize(100, 33));
}

TEST(FlowArrangement, GivesAnItemThatIsTooWideARowOfItsOwn)
{
    const auto arrangement = arrangeInRows({kChip, {300, 20}, kChip}, 100, kSpacing);
    EXPECT_EQ(arrangement.frames.at(1), QRect(0, 26, 300, 20));
    EXPECT_EQ(arrangement.frames.at(2), QRect(0, 52, 70, 20));
}

TEST(FlowArrangement, StacksThreeRowsOfOneHeightWithTheSpacingBetweenThem)
{
    const auto arrangement = arrangeInRows({kChip, kChip, kChip}, 100, kSpacing);
    EXPECT_EQ(arrangement.total.height(), 3 * kChip.height() + 2 * kSpacing);
}

TEST(FlowArrangement, MakesARowAsTallAsItsTallestItem)
{
    const auto arrangement = arrangeInRows({{40, 10}, {40, 30}, {40, 20}}, 90, kSpacing);
    EXPECT_EQ(arrangement.frames.at(2), QRect(0, 36, 40, 20));
    EXPECT_EQ(arrangement.total.height(), 56);
}
