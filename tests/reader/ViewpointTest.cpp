#include "reader/Viewpoint.h"

#include <gtest/gtest.h>

namespace
{
using Sizes = std::vector<std::optional<QSizeF>>;
constexpr double kGap = PageLayout::kGap;

Viewpoint viewpointOf(const Sizes &sizes, QSizeF viewport = QSizeF(624, 500))
{
    Viewpoint view;
    view.reset(qint64(sizes.size()));
    view.setViewport(viewport);
    view.learn(0, sizes);
    return view;
}

Viewpoint tenPages()
{
    return viewpointOf(Sizes(10, QSizeF(600, 800)));
}

void expectNear(QPointF a, QPointF b)
{
    EXPECT_NEAR(a.x(), b.x(), 1e-6);
    EXPECT_NEAR(a.y(), b.y(), 1e-6);
}
} // namespace

TEST(Viewpoint, FitsTheWidthFromTheStart)
{
    const Viewpoint view = tenPages();
    EXPECT_DOUBLE_EQ(view.scale(), 1);
    EXPECT_EQ(view.pageRect(0), QRectF(12, kGap, 600, 800));
    EXPECT_EQ(view.visiblePages(), (PageRange{0, 0}));
}

TEST(Viewpoint, FitsTheWidthOfEveryViewport)
{
    for (const double width : {200.0, 624.0, 1224.0, 3024.0}) {
        const Viewpoint view = viewpointOf(Sizes(10, QSizeF(600, 800)), {width, 500});
        EXPECT_NEAR(view.pageRect(0).width(), width - 24, 1e-9);
        EXPECT_NEAR(view.pageRect(0).left(), 12, 1e-9);
    }
}

TEST(Viewpoint, FitsTheWidthAgainAfterAResizeAndKeepsTheLineAtTheTop)
{
    Viewpoint view = tenPages();
    view.place({4, {100, 333}}, {0, 0});
    const PDFPosition before = view.positionAt({312, 0});
    view.setViewport({1224, 700});
    EXPECT_DOUBLE_EQ(view.scale(), 2);
    const PDFPosition after = view.positionAt({612, 0});
    EXPECT_EQ(after.pageIndex, 4);
    expectNear(after.point, before.point);
}

TEST(Viewpoint, FitsAPageAgainAfterAResize)
{
    Viewpoint view = tenPages();
    view.setFit(Viewpoint::Fit::Page);
    EXPECT_DOUBLE_EQ(view.pageRect(0).height(), 500 - 2 * kGap);
    view.setViewport({2000, 824});
    EXPECT_DOUBLE_EQ(view.pageRect(0).height(), 800);
    view.setViewport({324, 824});
    EXPECT_DOUBLE_EQ(view.pageRect(0).width(), 300);
}

TEST(Viewpoint, KeepsAScaleChosenByHandAfterAResize)
{
    Viewpoint view = tenPages();
    view.setScale(1.7, {0, 0});
    view.setViewport({900, 900});
    EXPECT_DOUBLE_EQ(view.scale(), 1.7);
    EXPECT_EQ(view.fit(), Viewpoint::Fit::None);
}

TEST(Viewpoint, KeepsThePointUnderThePointerWhileZooming)
{
    for (const QPointF pointer : {QPointF(300, 250), QPointF(100, 20), QPointF(600, 480)}) {
        Viewpoint view = tenPages();
        view.place({4, {300, 400}}, pointer);
        for (const double scale : {4.0, 11.0, 2.5}) {
            const PDFPosition before = view.positionAt(pointer);
            view.setScale(scale, pointer);
            const PDFPosition after = view.positionAt(pointer);
            EXPECT_EQ(after.pageIndex, before.pageIndex);
            expectNear(after.point, before.point);
        }
    }
}

TEST(Viewpoint, StopsAtTheEdgesOfTheFlowWhileZoomingOut)
{
    Viewpoint view = tenPages();
    view.setScale(3, {0, 0});
    view.setScale(1, {600, 480});
    EXPECT_DOUBLE_EQ(view.pageRect(0).left(), 12);
}

TEST(Viewpoint, KeepsTheScaleWithinBounds)
{
    Viewpoint view = tenPages();
    view.setScale(1000, {});
    EXPECT_DOUBLE_EQ(view.scale(), Viewpoint::kGreatestScale);
    view.setScale(0, {});
    EXPECT_DOUBLE_EQ(view.scale(), Viewpoint::kLeastScale);
}

TEST(Viewpoint, KeepsWhatIsVisibleInPlaceWhenSizesArriveAbove)
{
    Viewpoint view;
    view.reset(500);
    view.setViewport({624, 500});
    view.learn(256, Sizes(64, QSizeF(600, 800)));
    view.jumpToPage(260);
    view.moveTo(view.offset() + QPointF(0, 123));
    const QRectF before = view.pageRect(260);
    view.learn(0, Sizes(64, QSizeF(600, 1000)));
    EXPECT_EQ(view.pageRect(260), before);
    view.learn(320, Sizes(64, QSizeF(600, 100)));
    EXPECT_EQ(view.pageRect(260), before);
}

TEST(Viewpoint, FitsThePageItShowsOnceItsSizeIsKnown)
{
    Viewpoint view;
    view.reset(500);
    view.setViewport({624, 500});
    view.jumpToPage(300);
    view.learn(256, Sizes(64, QSizeF(300, 400)));
    EXPECT_DOUBLE_EQ(view.scale(), 2);
    EXPECT_EQ(view.currentPage(), 300);
    EXPECT_NEAR(view.pageRect(300).top(), kGap, kGap);
}

TEST(Viewpoint, FitsThePageThatAJumpLeadsTo)
{
    Viewpoint view = viewpointOf({QSizeF(600, 800), QSizeF(600, 800), QSizeF(1200, 800), QSizeF(600, 800)});
    view.jumpToPage(2);
    EXPECT_DOUBLE_EQ(view.pageRect(2).width(), 600);
    view.jumpToPage(0);
    EXPECT_DOUBLE_EQ(view.pageRect(0).width(), 600);
}

TEST(Viewpoint, TurnsPagesAroundTheMiddleOfTheViewport)
{
    Viewpoint view = tenPages();
    view.setFit(Viewpoint::Fit::None);
    view.place({4, {300, 400}}, {312, 250});
    for (int turns = 1; turns <= 4; ++turns) {
        view.setTurns(turns);
        const PDFPosition middle = view.positionAt({312, 250});
        EXPECT_EQ(middle.pageIndex, 4);
        expectNear(middle.point, {300, 400});
    }
}

TEST(Viewpoint, MapsThePointsOfATurnedPage)
{
    Viewpoint view = tenPages();
    view.setFit(Viewpoint::Fit::None);
    view.setTurns(1);
    const QRectF shown = view.pageRect(0);
    EXPECT_EQ(shown.size(), QSizeF(800, 600));
    expectNear(view.pageTransform(0).map(QPointF(0, 0)), shown.topRight());
    expectNear(view.pageTransform(0).map(QPointF(600, 800)), shown.bottomLeft());
}

TEST(Viewpoint, LetsOneScrollSidewaysOnlyWhereAVisiblePageIsWide)
{
    Viewpoint view = viewpointOf({QSizeF(600, 800), QSizeF(900, 800), QSizeF(600, 800)});
    EXPECT_DOUBLE_EQ(view.offsets().width(), 0);
    EXPECT_DOUBLE_EQ(view.pageRect(0).left(), 12);
    view.moveTo({1e9, 820});
    EXPECT_DOUBLE_EQ(view.offsets().width(), 300);
    EXPECT_DOUBLE_EQ(view.pageRect(1).right(), 612);
    view.moveTo({view.offset().x(), 1e9});
    EXPECT_DOUBLE_EQ(view.pageRect(2).left(), 12);
}

TEST(Viewpoint, NeedsNoScrollBarSidewaysWhileItFits)
{
    Viewpoint view = viewpointOf({QSizeF(600, 800), QSizeF(900, 800)});
    EXPECT_FALSE(view.isWiderThanViewport());
    view.setScale(0.9, {0, 0});
    EXPECT_TRUE(view.isWiderThanViewport());
    view.setScale(0.5, {0, 0});
    EXPECT_FALSE(view.isWiderThanViewport());
}

TEST(Viewpoint, KeepsTheScaleWhenOnlyTheHeightChanges)
{
    Viewpoint view = viewpointOf({QSizeF(600, 800), QSizeF(900, 800)});
    view.moveTo({0, 700});
    EXPECT_EQ(view.currentPage(), 1);
    view.setViewport({624, 480});
    EXPECT_DOUBLE_EQ(view.scale(), 1);
}

TEST(Viewpoint, StopsAtTheEdgesOfTheFlow)
{
    Viewpoint view = tenPages();
    view.moveTo({1e9, 1e9});
    EXPECT_DOUBLE_EQ(view.pageRect(9).bottom(), 500 - kGap);
    EXPECT_DOUBLE_EQ(view.pageRect(9).left(), 12);
    view.moveTo({-1e9, -1e9});
    EXPECT_DOUBLE_EQ(view.pageRect(0).top(), kGap);
}

TEST(Viewpoint, SetsWhatIsSmallerThanTheViewportInItsMiddle)
{
    Viewpoint view = viewpointOf({QSizeF(600, 800)}, {1000, 1000});
    view.setFit(Viewpoint::Fit::None);
    view.setScale(0.5, {});
    EXPECT_EQ(view.pageRect(0), QRectF(350, 300, 300, 400));
}

TEST(Viewpoint, CallsThePageWithTheLargestVisiblePartCurrent)
{
    Viewpoint view = tenPages();
    EXPECT_EQ(view.currentPage(), 0);
    const double half = 800 + kGap - 250;
    view.moveTo({view.offset().x(), half + kGap / 2 - 10});
    EXPECT_EQ(view.currentPage(), 0);
    view.moveTo({view.offset().x(), half + kGap / 2 + 10});
    EXPECT_EQ(view.currentPage(), 1);
}

TEST(Viewpoint, CallsTheUpperOfTwoWholePagesCurrent)
{
    Viewpoint view = viewpointOf(Sizes(10, QSizeF(600, 200)), {624, 3 * kGap + 400});
    EXPECT_EQ(view.visiblePages(), (PageRange{0, 1}));
    EXPECT_EQ(view.currentPage(), 0);
}

TEST(Viewpoint, HasNoCurrentPageWithoutPages)
{
    Viewpoint view;
    view.reset(0);
    view.setViewport({600, 500});
    EXPECT_EQ(view.currentPage(), std::nullopt);
    view.jumpToPage(3);
    view.setFit(Viewpoint::Fit::Page);
    view.setTurns(1);
    EXPECT_EQ(view.visiblePages(), PageRange());
}

TEST(Viewpoint, BearsAPageOfTenKilometres)
{
    Viewpoint view = viewpointOf({QSizeF(3e7, 3e7), QSizeF(600, 800)});
    EXPECT_NEAR(view.pageRect(0).width(), 600, 1e-6);
    view.jumpToPage(1);
    EXPECT_DOUBLE_EQ(view.pageRect(1).width(), 600);
    EXPECT_EQ(view.currentPage(), 1);
}
