#include "reader/ReaderFixture.h"

#include "search/NativeSearchService.h"

using namespace std::chrono_literals;

namespace
{
class PDFViewerControllerSearch : public ::testing::Test, protected ReaderFixture
{
protected:
    void SetUp() override
    {
        show();
        controller->setRequest(requestOf(QStringLiteral("p")));
    }

    /// Searches and finds something on each of these 1-based pages.
    void find(const QList<qint64> &pageNumbers)
    {
        // Never the same twice, which would not search.
        controller->searchText = u"some " + QString::number(searches.size());
        clock.advance(400ms);
        QList<Passage> passages;
        for (const qint64 page : pageNumbers)
            passages.append({QString(u"...some... thing on " + QString::number(page)), page});
        answer(searches.size() - 1, passages);
        awaitValue(controller->isSearching, false);
    }

    std::optional<qint64> hitPage() const
    {
        const int hit = controller->currentHit;
        return hit < 0 ? std::nullopt : std::optional(controller->searchResults.value()[hit].pageIndex + 1);
    }
};
} // namespace

TEST_F(PDFViewerControllerSearch, SearchesOnceFourHundredMillisecondsAfterTheLastEdit)
{
    controller->searchText = QStringLiteral("gra");
    clock.advance(399ms);
    controller->searchText = QStringLiteral("graph");
    clock.advance(399ms);
    EXPECT_TRUE(queries.isEmpty());
    clock.advance(1ms);
    EXPECT_EQ(queries, QStringList{QStringLiteral("p: graph")});
    clock.advance(10s);
    EXPECT_EQ(queries.size(), 1);
}

TEST_F(PDFViewerControllerSearch, DoesNotSearchAgainForTheSameText)
{
    controller->searchText = QStringLiteral("graph");
    clock.advance(400ms);
    controller->searchText = QStringLiteral("graph");
    EXPECT_FALSE(clock.hasPendingCalls());
}

TEST_F(PDFViewerControllerSearch, SearchesAtOnceForTheTextOfARequest)
{
    PDFOpenRequest request = requestOf(QStringLiteral("q"));
    request.searchText = QStringLiteral("kernel");
    controller->setRequest(request);
    EXPECT_EQ(controller->searchText.value(), u"kernel");
    EXPECT_EQ(queries, QStringList{QStringLiteral("q: kernel")});
    clock.advance(1s);
    EXPECT_EQ(queries.size(), 1);
}

TEST_F(PDFViewerControllerSearch, KeepsItsTextForARequestWithoutOne)
{
    controller->searchText = QStringLiteral("graph");
    PDFOpenRequest request = requestOf(QStringLiteral("p"));
    request.searchText = QString();
    controller->setRequest(request);
    EXPECT_EQ(controller->searchText.value(), u"graph");
    EXPECT_EQ(queries, QStringList{QStringLiteral("p: graph")});
}

TEST_F(PDFViewerControllerSearch, CountsThePagesOfHitsFromZero)
{
    controller->searchText = QStringLiteral("graph");
    clock.advance(400ms);
    EXPECT_TRUE(controller->isSearching);
    answer(0, QList<Passage>{{QStringLiteral("a ...graph..."), 1}, {QStringLiteral("...graphs..."), 9}});
    awaitValue(controller->isSearching, false);
    const QList<PDFSearchResult> hits = controller->searchResults;
    ASSERT_EQ(hits.size(), 2);
    EXPECT_EQ(hits[0].pageIndex, 0);
    EXPECT_EQ(hits[0].snippet, u"a ...graph...");
    EXPECT_EQ(hits[1].pageIndex, 8);
    EXPECT_NE(hits[0].id, hits[1].id);
    EXPECT_EQ(controller->currentHit, -1);
}

TEST_F(PDFViewerControllerSearch, NeverWritesTheHitsOfASearchThatANewerOneReplaced)
{
    controller->searchText = QStringLiteral("old");
    clock.advance(400ms);
    controller->searchText = QStringLiteral("new");
    clock.advance(400ms);
    answer(1, QList<Passage>{{QStringLiteral("new hit"), 2}});
    awaitValue(controller->isSearching, false);
    answer(0, QList<Passage>{{QStringLiteral("old hit"), 1}});
    QCoreApplication::processEvents();
    ASSERT_EQ(controller->searchResults.value().size(), 1);
    EXPECT_EQ(controller->searchResults.value().first().snippet, u"new hit");
    EXPECT_FALSE(controller->isSearching);
}

TEST_F(PDFViewerControllerSearch, EmptiesTheHitsAtOnceWhenTheTextIsEmpty)
{
    find({1, 2});
    controller->searchText = QString();
    clock.advance(400ms);
    EXPECT_TRUE(controller->searchResults.value().isEmpty());
    EXPECT_FALSE(controller->isSearching);
    EXPECT_EQ(queries.size(), 1);
}

TEST_F(PDFViewerControllerSearch, NeverSearchesOutsideTheLibrary)
{
    PDFOpenRequest request = requestOf(QString());
    request.paperId.reset();
    request.searchText = QStringLiteral("graph");
    controller->setRequest(request);
    EXPECT_TRUE(queries.isEmpty());
    EXPECT_FALSE(controller->isSearching);
}

TEST_F(PDFViewerControllerSearch, KeepsTheHitsAndLogsWhenASearchFails)
{
    find({3});
    controller->searchText = QStringLiteral("other");
    clock.advance(400ms);
    ::testing::internal::CaptureStdout();
    answer(1, Error{QStringLiteral("DatabaseManager"), 1, QStringLiteral("disk gone"), {}});
    awaitValue(controller->isSearching, false);
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "Reader Search Error: disk gone\n");
    EXPECT_EQ(controller->searchResults.value().size(), 1);
}

TEST_F(PDFViewerControllerSearch, EndsSearchingWithoutHitsForTextThatIsNoExpression)
{
    NativeSearchService search(library.db);
    PDFViewerController real({.view = view,
                              .library = library.service,
                              .bookmarkEvents = library.bookmarkEvents,
                              .clock = clock,
                              .searchInPaper = [&](const QString &paperId, const QString &query) {
                                  return search.searchInPaper(paperId, query);
                              }});
    real.setRequest(requestOf(QStringLiteral("p")));
    real.searchText = QStringLiteral("()\"\"");
    QCoro::waitFor(real.performSearch());
    EXPECT_FALSE(real.isSearching);
    EXPECT_TRUE(real.searchResults.value().isEmpty());
}

TEST_F(PDFViewerControllerSearch, FindsThePagesOfTheRealIndex)
{
    library.addPaper(QStringLiteral("p"), QStringLiteral("A paper"));
    library.addPage(QStringLiteral("p"), 4, "the kernel trick");
    NativeSearchService search(library.db);
    PDFViewerController real({.view = view,
                              .library = library.service,
                              .bookmarkEvents = library.bookmarkEvents,
                              .clock = clock,
                              .searchInPaper = [&](const QString &paperId, const QString &query) {
                                  return search.searchInPaper(paperId, query);
                              }});
    PDFOpenRequest request = requestOf(QStringLiteral("p"));
    request.searchText = QStringLiteral("kernel");
    real.setRequest(request);
    awaitValue(real.isSearching, false);
    ASSERT_EQ(real.searchResults.value().size(), 1);
    EXPECT_EQ(real.searchResults.value().first().pageIndex, 3);
}

TEST_F(PDFViewerControllerSearch, StepsThroughTheHitsAndAroundTheEnd)
{
    find({2, 5, 9});
    controller->goToNextHit();
    EXPECT_EQ(hitPage(), 2);
    EXPECT_EQ(view.nextJump(), u"page 1");
    controller->goToNextHit();
    controller->goToNextHit();
    EXPECT_EQ(hitPage(), 9);
    controller->goToNextHit();
    EXPECT_EQ(hitPage(), 2);
    controller->goToPreviousHit();
    EXPECT_EQ(hitPage(), 9);
    controller->goToPreviousHit();
    EXPECT_EQ(hitPage(), 5);
}

TEST_F(PDFViewerControllerSearch, BeginsSteppingAtThePageThatIsShown)
{
    find({2, 5, 9});
    view.scrollTo(3);
    controller->goToNextHit();
    EXPECT_EQ(hitPage(), 5);

    find({2, 5, 10});
    view.scrollTo(6);
    controller->goToPreviousHit();
    EXPECT_EQ(hitPage(), 5);
    find({5, 9});
    view.scrollTo(0);
    controller->goToPreviousHit();
    EXPECT_EQ(hitPage(), 9);
    find({1, 2});
    view.scrollTo(9);
    controller->goToNextHit();
    EXPECT_EQ(hitPage(), 1);
}

TEST_F(PDFViewerControllerSearch, StepsNowhereWithoutHits)
{
    controller->goToNextHit();
    controller->goToPreviousHit();
    controller->goToHit(0);
    EXPECT_EQ(controller->currentHit, -1);
    EXPECT_TRUE(view.jumps.isEmpty());
}

TEST_F(PDFViewerControllerSearch, LightsTheSnippetOfAHit)
{
    const PDFPageText page = PlacedText().line(QStringLiteral("here some thing stands"), {50, 100}).page();
    texts[4] = page;
    show();
    find({5});
    controller->goToHit(0);
    EXPECT_EQ(view.nextJump(), u"selection some thing");
}

TEST_F(PDFViewerControllerSearch, GoesOnFromTheHitThatItsRequestCameFor)
{
    PDFOpenRequest request = requestOf(QStringLiteral("p"));
    request.searchText = QStringLiteral("kernel");
    request.page = 5;
    controller->setRequest(request);
    answer(0, QList<Passage>{{QStringLiteral("kernel"), 2},
                             {QStringLiteral("kernel"), 5},
                             {QStringLiteral("kernel"), 7}});
    awaitValue(controller->isSearching, false);
    EXPECT_EQ(hitPage(), 5);
    controller->goToNextHit();
    EXPECT_EQ(hitPage(), 7);
}
