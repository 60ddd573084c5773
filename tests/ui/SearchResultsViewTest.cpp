#include "ui/SearchResultsView.h"
#include "app/LibraryViewModel.h"
#include "search/ParsedQuery.h"
#include "ui/GridFixture.h"

#include <QLabel>
#include <QProgressBar>

namespace
{
SearchResult result(const QString &id, const QList<Passage> &passages = {})
{
    return {.paperId = id,
            .title = u"Result " + id,
            .filepath = u"/found/" + id + u".pdf",
            .coverPath = u"/covers/" + id + u".jpg",
            .passages = passages,
            .score = 1};
}

Passage passage(const char *text, qint64 page)
{
    return {.text = QString::fromUtf8(text), .page = page};
}

class SearchResultsViewTest : public ::testing::Test, protected GridFixture
{
protected:
    SearchResultsViewTest()
    {
        view.resize(840, 700);
        activate(view);
    }

    void find(const QString &query, const QList<SearchResult> &results)
    {
        vm().queryText = query;
        vm().searchResults = results;
    }
    bool shows(const char *part) const { return view.findChild<QWidget *>(QLatin1String(part))->isVisible(); }
    PaperGrid &grid() const { return *view.findChild<PaperGrid *>(); }
    QPoint centre(int row) const { return grid().visualRect(grid().papers().index(row)).center(); }

    SearchResultsView view{vm(), covers, recordOpening()};
};
} // namespace

TEST(CardForResult, ShowsTheListedPaperWithItsTags)
{
    Paper listed;
    listed.id = QStringLiteral("a");
    listed.title = QStringLiteral("Listed");
    listed.tags = {QStringLiteral("physics")};
    const PaperCard card =
        cardForResult(result(QStringLiteral("a"), {passage("first", 4), passage("second", 2)}), &listed);
    EXPECT_EQ(card.paper, listed);
    EXPECT_EQ(card.passage, QStringLiteral("first"));
    EXPECT_EQ(card.passagePage, 4);
    EXPECT_EQ(card.morePassages, 1);
}

TEST(CardForResult, StandsInForAPaperThatIsNotListed)
{
    const PaperCard card = cardForResult(result(QStringLiteral("a")), nullptr);
    Paper substitute;
    substitute.id = QStringLiteral("a");
    substitute.title = QStringLiteral("Result a");
    substitute.filepath = QStringLiteral("/found/a.pdf");
    substitute.coverPath = QStringLiteral("/covers/a.jpg");
    EXPECT_EQ(card.paper, substitute);
}

TEST(CardForResult, HasNoPassageWhenTheResultHasNone)
{
    const PaperCard card = cardForResult(result(QStringLiteral("a")), nullptr);
    EXPECT_FALSE(card.passage);
    EXPECT_EQ(card.passagePage, 0);
    EXPECT_EQ(card.morePassages, 0);
}

TEST(CardsForResults, KeepTheOrderOfTheResults)
{
    const QList<Paper> listed = GridFixture::papers(3);
    const auto cards = cardsForResults(
        {result(QStringLiteral("p2")), result(QStringLiteral("other")), result(QStringLiteral("p0"))},
        listed);
    ASSERT_EQ(cards.size(), 3);
    EXPECT_EQ(cards.at(0).paper, listed.at(2));
    EXPECT_EQ(cards.at(1).paper.title, u"Result other");
    EXPECT_EQ(cards.at(2).paper, listed.at(0));
}

TEST(OpenRequestForResult, OpensTheBestPassageOnItsPage)
{
    const auto request = openRequestForResult(
        result(QStringLiteral("a"), {passage("...attention is...all...you need", 7), passage("other", 1)}),
        QStringLiteral("attention all"));
    EXPECT_FALSE(request.id.isNull());
    EXPECT_EQ(request.url, QUrl(QStringLiteral("file:///found/a.pdf")));
    EXPECT_EQ(request.page, 7);
    EXPECT_EQ(request.paperId, QStringLiteral("a"));
    EXPECT_EQ(request.searchText, QStringLiteral("attention all"));
    EXPECT_EQ(request.highlightText, QStringLiteral("attention isallyou need"));
}

TEST(OpenRequestForResult, TrimsTheEndsOfThePassageAndKeepsItsInside)
{
    const auto request = openRequestForResult(
        result(QStringLiteral("a"), {passage("... attention is ... all ... you need ...\n", 7)}), {});
    EXPECT_EQ(request.highlightText, QStringLiteral("attention is  all  you need"));
}

TEST(OpenRequestForResult, OpensPageOneWithTheWordsThatWereSearchedWithoutAPassage)
{
    const auto request = openRequestForResult(result(QStringLiteral("a")), QStringLiteral("attention all"));
    EXPECT_EQ(request.page, 1);
    EXPECT_EQ(request.highlightText, QStringLiteral("attention all"));
}

TEST(OpenRequestForResult, NamesEachRequestAnew)
{
    const SearchResult found = result(QStringLiteral("a"));
    EXPECT_NE(openRequestForResult(found, {}).id, openRequestForResult(found, {}).id);
}

TEST_F(SearchResultsViewTest, ShowsThatItIsSearchingWhileTheLibraryLoads)
{
    find(QStringLiteral("x"), {result(QStringLiteral("a"))});
    vm().isLoading = true;
    EXPECT_TRUE(shows("searching"));
    EXPECT_FALSE(grid().isVisible());
    const auto *busy = view.findChild<QWidget *>(QStringLiteral("searching"));
    EXPECT_EQ(busy->findChild<QLabel *>()->text(), u"Searching…");
    EXPECT_EQ(busy->findChild<QProgressBar *>()->maximum(), 0) << "no end is known";
    vm().isLoading = false;
    EXPECT_TRUE(grid().isVisible());
}

TEST_F(SearchResultsViewTest, ShowsACardForEachResultInOrder)
{
    show(papers(3));
    find(QStringLiteral("x"),
         {result(QStringLiteral("p2"), {passage("...x... y", 5)}), result(QStringLiteral("q"))});
    ASSERT_EQ(grid().papers().rowCount(), 2);
    EXPECT_EQ(grid().papers().paper(0).title, u"Paper 2");
    EXPECT_EQ(grid().papers().paper(1).title, u"Result q");
}

TEST_F(SearchResultsViewTest, SaysSoWhenNothingIsFound)
{
    find(QStringLiteral("author:x needle in hay"), {});
    EXPECT_TRUE(shows("nothingFound"));
    EXPECT_EQ(view.findChild<QLabel *>(QStringLiteral("emptyStateTitle"))->text(),
              u"Nothing found for \"needle in hay\"");
}

TEST_F(SearchResultsViewTest, PutsItsTitleAbove)
{
    const auto labels = view.findChildren<QLabel *>();
    EXPECT_TRUE(std::any_of(labels.begin(), labels.end(),
                            [](const QLabel *label) { return label->text() == u"Search Results"; }));
}

TEST_F(SearchResultsViewTest, ShowsThePaperOnceItIsListed)
{
    find(QStringLiteral("x"), {result(QStringLiteral("p0"))});
    EXPECT_EQ(grid().papers().paper(0).title, u"Result p0");
    show(papers(1));
    EXPECT_EQ(grid().papers().paper(0).title, u"Paper 0");
}

TEST_F(SearchResultsViewTest, OpensTheReaderOnADoubleClickedResult)
{
    find(QStringLiteral("year:2000 all attention"),
         {result(QStringLiteral("p0")), result(QStringLiteral("p1"), {passage("...all... you", 9)})});
    vm().filteredSearchResults = vm().searchResults.value(); // the filter would leave nothing
    QTest::mouseDClick(grid().viewport(), Qt::LeftButton, {}, centre(1));
    ASSERT_EQ(opened.size(), 1);
    EXPECT_EQ(opened.at(0).paperId, QStringLiteral("p1"));
    EXPECT_EQ(opened.at(0).page, 9);
    EXPECT_EQ(opened.at(0).searchText, QStringLiteral("all attention"));
    EXPECT_EQ(opened.at(0).highlightText, QStringLiteral("all you"));
}

TEST_F(SearchResultsViewTest, SharesTheSelectionWithTheWindow)
{
    find(QStringLiteral("x"), {result(QStringLiteral("p0")), result(QStringLiteral("p1"))});
    QTest::mouseClick(grid().viewport(), Qt::LeftButton, {}, centre(1));
    ASSERT_TRUE(vm().selectedPaper.value());
    EXPECT_EQ(vm().selectedPaper.value()->id, u"p1");
    vm().select(std::nullopt);
    EXPECT_EQ(grid().selectedPaperId(), u"");
}
