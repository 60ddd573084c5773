#include "ui/GridGeometry.h"

#include <gtest/gtest.h>

namespace
{
GridGeometry grid(int width, int count)
{
    return {.width = width, .count = count, .cardHeight = 280};
}
} // namespace

TEST(GridGeometry, FitsAsManyColumnsAsTheWidthHolds)
{
    // n columns need 2 * 20 + n * 168 + (n - 1) * 24.
    EXPECT_EQ(grid(2 * 20 + 168, 9).columns(), 1);
    EXPECT_EQ(grid(2 * 20 + 2 * 168 + 24 - 1, 9).columns(), 1);
    EXPECT_EQ(grid(2 * 20 + 2 * 168 + 24, 9).columns(), 2);
    EXPECT_EQ(grid(2 * 20 + 5 * 168 + 4 * 24, 9).columns(), 5);
    EXPECT_EQ(grid(1920, 9).columns(), 9);
}

TEST(GridGeometry, KeepsOneColumnInAWindowNarrowerThanACard)
{
    EXPECT_EQ(grid(100, 3).columns(), 1);
    EXPECT_EQ(grid(100, 3).cardRect(2), QRect(0, 20 + 2 * 304, 168, 280));
}

TEST(GridGeometry, CentresTheColumnsAndPutsTheGapsBetweenCards)
{
    const GridGeometry four = grid(840, 10); // 744 used, 48 left at each side
    EXPECT_EQ(four.columns(), 4);
    EXPECT_EQ(four.cardRect(0), QRect(48, 20, 168, 280));
    EXPECT_EQ(four.cardRect(1), QRect(48 + 192, 20, 168, 280));
    EXPECT_EQ(four.cardRect(4), QRect(48, 20 + 304, 168, 280));
    EXPECT_EQ(four.cardRect(3).right(), 840 - 48 - 1);
}

TEST(GridGeometry, MeasuresTheContentWithItsPadding)
{
    EXPECT_EQ(grid(840, 0).height(), 0);
    EXPECT_EQ(grid(840, 1).height(), 20 + 280 + 20);
    EXPECT_EQ(grid(840, 4).height(), 20 + 280 + 20);
    EXPECT_EQ(grid(840, 5).height(), 20 + 2 * 280 + 24 + 20);
    EXPECT_EQ(grid(840, 5).lines(), 2);
}

TEST(GridGeometry, HoldsAHundredThousandCardsInOneColumn)
{
    EXPECT_EQ(grid(208, 100'000).height(), 20 + 100'000 * 304 - 24 + 20);
    EXPECT_EQ(grid(208, 100'000).cardRect(99'999).top(), 20 + 99'999 * 304);
}

TEST(GridGeometry, FindsTheCardUnderAPoint)
{
    const GridGeometry four = grid(840, 6);
    EXPECT_EQ(four.cardAt({48, 20}), 0);
    EXPECT_EQ(four.cardAt({48 + 192 + 167, 20 + 304 + 279}), 5);
    EXPECT_EQ(four.cardAt({48 + 3 * 192, 20}), 3);
}

TEST(GridGeometry, FindsNoCardInGapsAndMargins)
{
    const GridGeometry four = grid(840, 6);
    EXPECT_EQ(four.cardAt({47, 20}), std::nullopt);
    EXPECT_EQ(four.cardAt({48, 19}), std::nullopt);
    EXPECT_EQ(four.cardAt({48 + 168, 30}), std::nullopt);
    EXPECT_EQ(four.cardAt({60, 20 + 280}), std::nullopt);
    EXPECT_EQ(four.cardAt({48 + 2 * 192, 20 + 304}), std::nullopt) << "a place in the last line without card";
    EXPECT_EQ(four.cardAt({830, 30}), std::nullopt);
    EXPECT_EQ(four.cardAt({60, 5000}), std::nullopt);
}

TEST(GridGeometry, NamesTheCardsThatReachIntoAStripe)
{
    using Range = GridGeometry::Range;
    const GridGeometry four = grid(840, 10);
    EXPECT_EQ(four.cardsBetween(0, 10), Range{}) << "only the margin";
    EXPECT_EQ(four.cardsBetween(0, 20), (Range{0, 3}));
    EXPECT_EQ(four.cardsBetween(0, 20 + 304), (Range{0, 7}));
    EXPECT_EQ(four.cardsBetween(299, 310), (Range{0, 3})) << "the first line's last pixel";
    EXPECT_EQ(four.cardsBetween(324, 900), (Range{4, 9})) << "the last line is not full";
    EXPECT_EQ(grid(840, 0).cardsBetween(0, 900), Range{});
}

TEST(GridGeometry, NamesEveryCardThatAStripeTouchesAndNoOther)
{
    const GridGeometry three = grid(700, 50);
    for (int top = 0; top < three.height(); top += 37) {
        const auto range = three.cardsBetween(top, top + 400);
        for (int card = 0; card < 50; ++card) {
            const QRect rect = three.cardRect(card);
            const bool touches = rect.bottom() >= top && rect.top() <= top + 400;
            const bool isNamed = card >= range.first && card <= range.last;
            EXPECT_FALSE(touches && !isNamed) << "card " << card << " from " << top;
        }
        EXPECT_LE(range.last - range.first, 4 * three.columns()) << "from " << top;
    }
}
