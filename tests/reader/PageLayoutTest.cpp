#include "reader/PageLayout.h"

#include <gtest/gtest.h>

namespace
{
constexpr double kGap = PageLayout::kGap;

PageLayout layoutOf(const std::vector<std::optional<QSizeF>> &sizes)
{
    PageLayout layout(qint64(sizes.size()));
    layout.learn(0, sizes);
    return layout;
}
} // namespace

TEST(PageLayout, SetsPagesOneBelowTheOtherWithGapsThatDoNotGrow)
{
    const PageLayout layout = layoutOf({QSizeF(100, 200), QSizeF(50, 80), QSizeF(100, 200)});
    for (const double scale : {0.5, 1.0, 3.25}) {
        EXPECT_EQ(layout.rect(0, scale), QRectF(-50 * scale, kGap, 100 * scale, 200 * scale));
        EXPECT_EQ(layout.rect(1, scale), QRectF(-25 * scale, 2 * kGap + 200 * scale, 50 * scale, 80 * scale));
        EXPECT_DOUBLE_EQ(layout.rect(2, scale).top(), 3 * kGap + 280 * scale);
        EXPECT_DOUBLE_EQ(layout.height(scale), 4 * kGap + 480 * scale);
    }
}

TEST(PageLayout, TurnsEveryPage)
{
    PageLayout layout = layoutOf({QSizeF(100, 200), QSizeF(50, 80)});
    layout.setTurns(1);
    EXPECT_EQ(layout.size(0), QSizeF(200, 100));
    EXPECT_DOUBLE_EQ(layout.rect(1, 2).top(), 2 * kGap + 200);
    EXPECT_DOUBLE_EQ(layout.greatestWidth(), 200);
    layout.setTurns(-2);
    EXPECT_EQ(layout.turns(), 2);
    EXPECT_EQ(layout.size(0), QSizeF(100, 200));
}

TEST(PageLayout, AssumesTheFirstSizeThatBecameKnownForTheRest)
{
    PageLayout layout(1000);
    EXPECT_FALSE(layout.hasSizes());
    layout.learn(500, {QSizeF(300, 400)});
    EXPECT_TRUE(layout.hasSizes());
    EXPECT_EQ(layout.size(0), QSizeF(300, 400));
    EXPECT_TRUE(layout.isKnown(500));
    EXPECT_FALSE(layout.isKnown(501));
    EXPECT_DOUBLE_EQ(layout.height(1), 1001 * kGap + 1000 * 400);
}

TEST(PageLayout, CountsSizesThatArriveInAnyOrder)
{
    PageLayout layout(300);
    layout.learn(0, {QSizeF(100, 100)});
    layout.learn(200, {QSizeF(100, 150), QSizeF(100, 160)});
    layout.learn(70, {QSizeF(100, 90)});
    EXPECT_DOUBLE_EQ(layout.rect(70, 1).top(), 71 * kGap + 7000);
    EXPECT_DOUBLE_EQ(layout.rect(71, 1).top(), 72 * kGap + 7090);
    EXPECT_DOUBLE_EQ(layout.rect(201, 1).top(), 202 * kGap + 20100 - 10 + 50);
    EXPECT_DOUBLE_EQ(layout.height(1), 301 * kGap + 30000 - 10 + 50 + 60);
}

TEST(PageLayout, KeepsTheAssumedSizeForAPageThatCannotBeHad)
{
    const PageLayout layout = layoutOf({QSizeF(100, 200), std::nullopt});
    EXPECT_TRUE(layout.isKnown(1));
    EXPECT_EQ(layout.size(1), QSizeF(100, 200));
}

TEST(PageLayout, ShowsLetterPaperWhereNoSizeCanBeHad)
{
    const PageLayout layout = layoutOf({std::nullopt});
    EXPECT_TRUE(layout.hasSizes());
    EXPECT_EQ(layout.size(0), QSizeF(612, 792));
}

TEST(PageLayout, FindsThePageAtAHeight)
{
    const PageLayout layout = layoutOf({QSizeF(100, 200), QSizeF(50, 80), QSizeF(100, 200)});
    EXPECT_EQ(layout.pageAt(-5, 1), 0);
    EXPECT_EQ(layout.pageAt(kGap, 1), 0);
    EXPECT_EQ(layout.pageAt(kGap + 200, 1), 0) << "the gap belongs to the page above";
    EXPECT_EQ(layout.pageAt(2 * kGap + 200, 1), 1);
    EXPECT_EQ(layout.pageAt(1e9, 1), 2);
}

TEST(PageLayout, TellsWhichPagesHaveAPartBetweenTwoHeights)
{
    const PageLayout layout = layoutOf({QSizeF(100, 200), QSizeF(50, 80), QSizeF(100, 200)});
    EXPECT_EQ(layout.pagesBetween(0, 50, 1), (PageRange{0, 0}));
    EXPECT_EQ(layout.pagesBetween(kGap + 199, 2 * kGap + 201, 1), (PageRange{0, 1}));
    EXPECT_EQ(layout.pagesBetween(kGap + 200, 2 * kGap + 200, 1), (PageRange{1, 0})) << "only a gap";
    EXPECT_EQ(layout.pagesBetween(-100, 1e6, 1), (PageRange{0, 2}));
}

TEST(PageLayout, HasNoPagesWithoutAny)
{
    const PageLayout layout(0);
    EXPECT_EQ(layout.pagesBetween(0, 100, 1), PageRange());
    EXPECT_DOUBLE_EQ(layout.height(1), kGap);
}

TEST(PageLayout, BearsADocumentThatClaimsTwoThousandMillionPages)
{
    PageLayout layout(0x7fffffff);
    layout.learn(0x7ffffff0, {QSizeF(100, 200)});
    EXPECT_EQ(layout.pageAt(layout.height(2), 2), 0x7ffffffe);
    EXPECT_EQ(layout.pageAt(layout.rect(123456789, 2).center().y(), 2), 123456789);
}
