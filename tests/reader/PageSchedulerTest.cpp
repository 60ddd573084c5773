#include "reader/PageScheduler.h"

#include "pdf/PDFDocument.h"
#include "support/FakePages.h"

#include <gtest/gtest.h>

namespace
{
PageJob textOf(qint64 page)
{
    return {PageJob::Kind::Text, page, {}};
}

PlannedJob visible(qint64 page)
{
    return {textOf(page), true};
}

PlannedJob ahead(qint64 page)
{
    return {textOf(page), false};
}

class PageSchedulerTest : public testing::Test
{
protected:
    std::vector<qint64> wanted() const
    {
        std::vector<qint64> numbers;
        for (const PageJob &job : pages.wanted(PageJob::Kind::Text))
            numbers.push_back(job.page);
        return numbers;
    }

    FakePages pages{100};
    std::unique_ptr<PageSource> source = pages.source();
    std::vector<qint64> arrived;
    std::vector<qint64> failed;
    std::unique_ptr<PageScheduler> scheduler = std::make_unique<PageScheduler>(
        *source, [this](const PageJob &job, const PageAnswer &) { arrived.push_back(job.page); },
        [this](const PageJob &job) { failed.push_back(job.page); });
};

using Pages = std::vector<qint64>;
} // namespace

TEST_F(PageSchedulerTest, AsksAFewJobsAtATimeInTheirOrder)
{
    scheduler->setPlan({visible(5), visible(6), ahead(7), ahead(4)});
    EXPECT_EQ(wanted(), (Pages{5, 6}));
    pages.answerNext();
    EXPECT_EQ(wanted(), (Pages{6, 7}));
    pages.answerAll();
    EXPECT_EQ(arrived, (Pages{5, 6, 7, 4}));
    EXPECT_TRUE(scheduler->isIdle());
}

TEST_F(PageSchedulerTest, DoesNotAskAgainForWhatIsUnderWay)
{
    scheduler->setPlan({visible(5), visible(6)});
    scheduler->setPlan({visible(6), visible(5)});
    EXPECT_EQ(pages.questions.size(), 2u);
}

TEST_F(PageSchedulerTest, StopsWhatIsNoLongerNeeded)
{
    scheduler->setPlan({visible(5), visible(6)});
    scheduler->setPlan({visible(6), visible(7)});
    EXPECT_EQ(wanted(), (Pages{6, 7}));
    pages.answerAll();
    EXPECT_EQ(arrived, (Pages{6, 7}));
    EXPECT_TRUE(failed.empty());
}

TEST_F(PageSchedulerTest, StopsWhatLooksAheadWhenSomethingVisibleWaits)
{
    scheduler->setPlan({ahead(8), ahead(9)});
    scheduler->setPlan({visible(20), ahead(8), ahead(9)});
    EXPECT_EQ(wanted(), (Pages{20, 8})) << "8 is asked again, behind what is visible";
    pages.answerAll();
    EXPECT_EQ(arrived, (Pages{20, 8, 9}));
}

TEST_F(PageSchedulerTest, LetsFinishWhatIsVisible)
{
    scheduler->setPlan({visible(5), visible(6)});
    scheduler->setPlan({visible(7), visible(5), visible(6)});
    EXPECT_EQ(wanted(), (Pages{5, 6}));
}

TEST_F(PageSchedulerTest, KeepsAnAnswerThatCameInSpiteOfItsStop)
{
    scheduler->setPlan({visible(5)});
    const FakePages::Question question = pages.questions.front();
    scheduler->setPlan({});
    question.answered(pages.answerTo(question.planned.job));
    EXPECT_EQ(arrived, (Pages{5}));
}

TEST_F(PageSchedulerTest, DoesNotAskAgainForWhatCannotBeHad)
{
    pages.failures[{PageJob::Kind::Text, 5}] = pdfError(PDFErrorCode::PageUnavailable);
    scheduler->setPlan({visible(5), visible(6)});
    pages.answerAll();
    EXPECT_EQ(failed, (Pages{5}));
    EXPECT_TRUE(scheduler->hasFailed(textOf(5)));
    scheduler->setPlan({visible(5)});
    EXPECT_TRUE(pages.questions.empty());
}

TEST_F(PageSchedulerTest, AsksNothingWhileTheDocumentIsClosed)
{
    pages.isOpen = false;
    scheduler->setPlan({visible(5)});
    EXPECT_TRUE(pages.questions.empty());
    pages.isOpen = true;
    scheduler->setPlan({visible(5)});
    EXPECT_EQ(wanted(), (Pages{5}));
}

TEST_F(PageSchedulerTest, AsksNothingAfterTheEngineWasLostUntilItResumes)
{
    pages.failures[{PageJob::Kind::Text, 5}] = pdfError(PDFErrorCode::EngineFailed);
    pages.failures[{PageJob::Kind::Text, 6}] = pdfError(PDFErrorCode::EngineFailed);
    scheduler->setPlan({visible(5), visible(6), visible(7)});
    pages.answerAll();
    scheduler->setPlan({visible(7)});
    EXPECT_TRUE(pages.questions.empty());
    EXPECT_TRUE(arrived.empty());
    scheduler->resume();
    scheduler->setPlan({visible(7)});
    pages.answerAll();
    EXPECT_EQ(arrived, (Pages{7}));
}

TEST_F(PageSchedulerTest, GivesUpAPageThatEndsEveryEngine)
{
    pages.failures[{PageJob::Kind::Text, 5}] = pdfError(PDFErrorCode::EngineFailed);
    for (int i = 0; i < PageScheduler::kTriesOfFatalPage; ++i) {
        EXPECT_FALSE(scheduler->hasFailed(textOf(5)));
        scheduler->resume();
        scheduler->setPlan({visible(5)});
        pages.answerAll();
    }
    EXPECT_EQ(failed, (Pages{5}));
}

TEST_F(PageSchedulerTest, DoesNotBlameAPageThatMerelyWaitedWhenTheEngineWasLost)
{
    for (const qint64 page : {5, 6})
        pages.failures[{PageJob::Kind::Text, page}] = pdfError(PDFErrorCode::EngineFailed);
    for (int i = 0; i < PageScheduler::kTriesOfFatalPage; ++i) {
        scheduler->resume();
        scheduler->setPlan({visible(5), visible(6)});
        pages.answerAll();
    }
    EXPECT_EQ(failed, (Pages{5}));
}

TEST_F(PageSchedulerTest, MayGoWhileAnAnswerArrives)
{
    scheduler = std::make_unique<PageScheduler>(
        *source, [this](const PageJob &, const PageAnswer &) { scheduler.reset(); }, [](const PageJob &) {});
    scheduler->setPlan({visible(5), visible(6), visible(7)});
    pages.answerAll();
    EXPECT_EQ(scheduler, nullptr);
}

TEST_F(PageSchedulerTest, StopsEverythingWhenItGoes)
{
    scheduler->setPlan({visible(5), visible(6)});
    scheduler.reset();
    EXPECT_TRUE(wanted().empty());
    pages.answerAll();
    EXPECT_TRUE(arrived.empty());
}
