#include "reader/ReadingPlan.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace
{
using Kind = PageJob::Kind;

class ReadingPlanTest : public testing::Test
{
protected:
    void show(qint64 pageCount, QSizeF viewport = {624, 500})
    {
        view.reset(pageCount);
        view.setViewport(viewport);
    }

    void learnAll()
    {
        view.learn(0,
                   std::vector<std::optional<QSizeF>>(size_t(view.layout().pageCount()), QSizeF(600, 800)));
    }

    std::vector<PlannedJob> plan() const { return planReading({view, 1, false, selected, *cache, contents}); }

    std::vector<qint64> pagesOf(Kind kind) const
    {
        std::vector<qint64> pages;
        for (const PlannedJob &planned : plan()) {
            if (planned.job.kind == kind)
                pages.push_back(planned.job.page);
        }
        return pages;
    }

    Viewpoint view;
    std::unique_ptr<PageCache> cache = std::make_unique<PageCache>();
    PageContents contents;
    PageRange selected;
};

using Pages = std::vector<qint64>;
} // namespace

TEST_F(ReadingPlanTest, StartsWithTheSizesOfWhatIsVisible)
{
    show(5000);
    view.jumpToPage(1000);
    const std::vector<PlannedJob> jobs = plan();
    ASSERT_FALSE(jobs.empty());
    EXPECT_EQ(jobs.front(), (PlannedJob{{Kind::Sizes, 960, {}}, true}));
    EXPECT_TRUE(pagesOf(Kind::Picture).empty()) << "how large they are to be is not known";
}

TEST_F(ReadingPlanTest, DrawsWhatIsVisibleBeforeItsNeighbours)
{
    show(10);
    learnAll();
    view.jumpToPage(4);
    EXPECT_EQ(pagesOf(Kind::Picture), (Pages{4, 5, 3}));
    EXPECT_TRUE(plan().front().isVisible);
}

TEST_F(ReadingPlanTest, WantsTextAndLinksOfVisiblePagesBeforeItLooksAhead)
{
    show(10);
    learnAll();
    const std::vector<PlannedJob> jobs = plan();
    std::vector<Kind> kinds;
    for (const PlannedJob &planned : jobs)
        kinds.push_back(planned.job.kind);
    EXPECT_EQ(kinds, (std::vector<Kind>{Kind::Picture, Kind::Text, Kind::Links, Kind::Picture}));
    EXPECT_TRUE(jobs[2].isVisible);
    EXPECT_FALSE(jobs[3].isVisible);
}

TEST_F(ReadingPlanTest, LeavesOutWhatIsThere)
{
    show(1, {624, 900});
    learnAll();
    const std::vector<PlannedJob> jobs = plan();
    cache->insert(jobs.front().job.tile, QImage(jobs.front().job.tile.part.size(), QImage::Format_RGB32));
    contents.setText(0, {});
    contents.setLinks(0, {});
    EXPECT_TRUE(plan().empty());
}

TEST_F(ReadingPlanTest, PlansNoMorePicturesThanTheCacheHolds)
{
    cache = std::make_unique<PageCache>(qsizetype(2) * 600 * 800 * 4 + 100);
    show(10);
    learnAll();
    view.jumpToPage(4);
    EXPECT_EQ(pagesOf(Kind::Picture), (Pages{4, 5}));
}

TEST_F(ReadingPlanTest, StaysWithinTheCacheAtEightHundredPercentOnAHighDensityScreen)
{
    show(10, {1900, 1000});
    learnAll();
    view.setScale(8 * 96 / 72.0, {900, 500});
    qint64 bytes = 0;
    for (const PlannedJob &planned : planReading({view, 2, false, selected, *cache, contents}))
        bytes += planned.job.kind == Kind::Picture ? bytesOf(planned.job.tile) : 0;
    EXPECT_GT(bytes, qint64(1900) * 1000 * 4 * 4);
    EXPECT_LE(bytes, cache->limitBytes());
}

TEST_F(ReadingPlanTest, DrawsLessSharplyWhereOneScreenWouldFillTheCache)
{
    show(10, {7680, 4320});
    learnAll();
    const PageStyle style = pageStyle(view, 2, false, cache->limitBytes());
    EXPECT_LT(style.scale, 2 * view.scale());
    EXPECT_DOUBLE_EQ(pageStyle(view, 0.4, false, cache->limitBytes()).scale, 0.4 * view.scale());
}

TEST_F(ReadingPlanTest, WantsTheTextsOfASelectionInTheBackground)
{
    show(10);
    learnAll();
    selected = {0, 3};
    EXPECT_EQ(pagesOf(Kind::Text), (Pages{0, 1, 2, 3}));
    EXPECT_EQ(plan().back(), (PlannedJob{{Kind::Text, 3, {}}, false}));
}

TEST_F(ReadingPlanTest, DoesNotFetchAWholeDocumentThatIsSelected)
{
    show(5000);
    learnAll();
    selected = {0, 4999};
    EXPECT_EQ(qint64(pagesOf(Kind::Text).size()), kMostSelectedPages);
}

TEST_F(ReadingPlanTest, WantsNoMoreTextsOfASelectionThanAreKept)
{
    show(10);
    learnAll();
    selected = {0, 3};
    contents.setText(0, PDFPageText(QString(300'000, u'x'), QList<QRectF>(300'000)));
    EXPECT_TRUE(pagesOf(Kind::Text).empty());
}

TEST_F(ReadingPlanTest, WantsNothingOfADocumentWithoutPages)
{
    show(0);
    EXPECT_TRUE(plan().empty());
}
