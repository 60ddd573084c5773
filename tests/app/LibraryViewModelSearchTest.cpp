// Searching and filtering.
#include "app/LibraryViewModel.h"

#include "support/ViewModelFixture.h"

using namespace std::chrono_literals;

class LibraryViewModelSearchTest : public testing::Test, protected ViewModelFixture
{
protected:
    static QList<SearchResult> resultsFor(const QStringList &paperIds)
    {
        QList<SearchResult> results;
        for (const QString &id : paperIds)
            results.append({.paperId = id,
                            .title = u"Title " + id,
                            .filepath = u"/papers/" + id + u".pdf",
                            .coverPath = {},
                            .passages = {},
                            .score = 1});
        return results;
    }
    static QStringList paperIds(const QList<SearchResult> &results)
    {
        QStringList ids;
        for (const SearchResult &result : results)
            ids.append(result.paperId);
        return ids;
    }

    void type(const QString &text) { vm().queryText = text; }
    /// Searches for the text and shows the results.
    void find(const QString &text, const QStringList &ids)
    {
        type(text);
        clock.advance(400ms);
        search.answer(search.queries.size() - 1, resultsFor(ids));
        waitUntil(vm().isLoading, false);
    }
    QStringList found() { return paperIds(vm().searchResults); }
    QStringList foundAfterFilters() { return paperIds(vm().filteredSearchResults); }
    QStringList filtered() { return idsOf(vm().filteredPapers); }

    const QString m_a = QStringLiteral("a");
    const QString m_b = QStringLiteral("b");
    const QString m_graph = QStringLiteral("graph");
};

TEST_F(LibraryViewModelSearchTest, AsksOnceForTheFinalTextAfterTypingPauses)
{
    type(QStringLiteral("gr"));
    clock.advance(399ms);
    type(QStringLiteral("gra"));
    clock.advance(399ms);
    type(m_graph);
    clock.advance(399ms);
    EXPECT_TRUE(search.queries.isEmpty());
    EXPECT_FALSE(vm().isSearching) << "what was shown stays while typing goes on";
    clock.advance(1ms);
    EXPECT_EQ(search.queries, QStringList{m_graph});
    EXPECT_FALSE(clock.hasPendingCalls());
}

TEST_F(LibraryViewModelSearchTest, IsBusyUntilTheResultsAreThere)
{
    type(m_graph);
    clock.advance(400ms);
    EXPECT_TRUE(vm().isSearching);
    EXPECT_TRUE(vm().isLoading);
    search.answer(0, resultsFor({m_b, m_a}));
    waitUntil(vm().isLoading, false);
    EXPECT_TRUE(vm().isSearching);
    EXPECT_EQ(found(), (QStringList{m_b, m_a}));
}

TEST_F(LibraryViewModelSearchTest, SearchesForTheFreeTextWithoutFilters)
{
    type(QStringLiteral("author:smith title:deep attention \"of graphs\""));
    clock.advance(400ms);
    EXPECT_EQ(search.queries, QStringList{QStringLiteral("attention \"of graphs\"")});
}

TEST_F(LibraryViewModelSearchTest, NeverSearchesForFiltersAlone)
{
    addPaper(m_a, QStringLiteral("Deep nets"));
    addPaper(m_b, QStringLiteral("Shallow nets"));
    load();
    type(QStringLiteral("title:deep"));
    clock.advance(10s);
    EXPECT_TRUE(search.queries.isEmpty());
    EXPECT_FALSE(vm().isSearching);
    EXPECT_EQ(filtered(), QStringList{m_a});
}

TEST_F(LibraryViewModelSearchTest, TakesAQueryOfSpacesForNone)
{
    find(m_graph, {m_a});
    type(QStringLiteral(" \t  "));
    EXPECT_FALSE(vm().isSearching);
    EXPECT_TRUE(found().isEmpty());
    clock.advance(10s);
    EXPECT_EQ(search.queries.size(), 1);
}

TEST_F(LibraryViewModelSearchTest, LeavesSearchAtOnceWhenTheQueryIsCleared)
{
    find(m_graph, {m_a});
    type(QStringLiteral("graphs"));
    type({});
    EXPECT_FALSE(vm().isSearching);
    EXPECT_FALSE(vm().isLoading);
    EXPECT_TRUE(found().isEmpty());
    clock.advance(10s);
    EXPECT_EQ(search.queries.size(), 1) << "the search that waited is called off";
}

TEST_F(LibraryViewModelSearchTest, AssignsWhateverAnswersLast)
{
    type(m_graph);
    clock.advance(400ms);
    type(QStringLiteral("graphs"));
    clock.advance(400ms);
    search.answer(1, resultsFor({m_b}));
    waitUntil(vm().searchResults, resultsFor({m_b}));
    EXPECT_TRUE(vm().isLoading) << "one search is still running";
    search.answer(0, resultsFor({m_a}));
    waitUntil(vm().isLoading, false);
    EXPECT_EQ(found(), QStringList{m_a});
}

TEST_F(LibraryViewModelSearchTest, DropsAnAnswerThatComesAfterTheQueryWasCleared)
{
    type(m_graph);
    clock.advance(400ms);
    type({});
    EXPECT_FALSE(vm().isLoading);
    search.answer(0, resultsFor({m_a}));
    waitFor(vm().loadPapers());
    EXPECT_TRUE(found().isEmpty());
    EXPECT_FALSE(vm().isSearching);
}

TEST_F(LibraryViewModelSearchTest, ShowsWhyASearchFailedAndKeepsTheResults)
{
    find(m_graph, {m_a});
    type(QStringLiteral("graphs"));
    clock.advance(400ms);
    search.answer(
        1, Error{QStringLiteral("DatabaseManager"), 11, QStringLiteral("disk image is malformed"), {}});
    waitUntil(vm().isLoading, false);
    EXPECT_EQ(vm().errorMessage.value(), QStringLiteral("disk image is malformed"));
    EXPECT_EQ(found(), QStringList{m_a});
}

TEST_F(LibraryViewModelSearchTest, CanBeAskedDirectly)
{
    QCoro::Task<> searching = vm().performSearch(m_graph);
    EXPECT_TRUE(vm().isSearching);
    search.answer(0, resultsFor({m_a}));
    waitFor(std::move(searching));
    EXPECT_EQ(found(), QStringList{m_a});
}

TEST_F(LibraryViewModelSearchTest, IsLoadingAsLongAsALoadOrASearchRuns)
{
    type(m_graph);
    clock.advance(400ms);
    waitFor(vm().loadPapers());
    EXPECT_TRUE(vm().isLoading);
    search.answer(0, resultsFor({}));
    waitUntil(vm().isLoading, false);
}

TEST_F(LibraryViewModelSearchTest, LeavesQueryAndResultsAloneWhenTheSidebarChanges)
{
    addPaper(m_a, m_a, {QStringLiteral("x")});
    find(m_graph, {m_a});
    vm().currentSidebarItem = SidebarItem::ofTag(QStringLiteral("x"));
    waitUntil(vm().isLoading, false);
    EXPECT_EQ(vm().queryText.value(), m_graph);
    EXPECT_TRUE(vm().isSearching);
    EXPECT_EQ(found(), QStringList{m_a});
}

TEST_F(LibraryViewModelSearchTest, HidesPapersWithoutAYearFromAYearFilter)
{
    addPaper(m_a, m_a, {}, {}, 2019);
    addPaper(m_b, m_b);
    load();
    type(QStringLiteral("year:2019"));
    EXPECT_EQ(filtered(), QStringList{m_a});
    type(QStringLiteral("year:2019 year:abc"));
    EXPECT_EQ(filtered(), (QStringList{m_a, m_b}));
}

TEST_F(LibraryViewModelSearchTest, FiltersWithoutAskingTheStore)
{
    addPaper(m_a, m_a, {}, QStringLiteral("Émile Smith"));
    addPaper(m_b, m_b, {}, QStringLiteral("Jones"));
    load();
    library.statements.clear();
    type(QStringLiteral("author:éMILE filename:A"));
    EXPECT_EQ(filtered(), QStringList{m_a});
    type({});
    EXPECT_EQ(filtered(), (QStringList{m_a, m_b}));
    EXPECT_EQ(library.statements.beginningWith(QStringLiteral("SELECT * FROM papers")), QStringList());
}

TEST_F(LibraryViewModelSearchTest, FiltersPapersThatAreLoadedLater)
{
    type(QStringLiteral("title:deep"));
    addPaper(m_a, QStringLiteral("Deep nets"));
    addPaper(m_b, QStringLiteral("Shallow nets"));
    load();
    EXPECT_EQ(filtered(), QStringList{m_a});
}

TEST_F(LibraryViewModelSearchTest, AnnouncesAFilterOnlyWhenItShowsSomethingElse)
{
    addPaper(m_a, QStringLiteral("Deep nets"));
    addPaper(m_b, QStringLiteral("Shallow nets"));
    load();
    int announced = 0;
    const auto observer = vm().filteredPapers.addNotifier([&] { ++announced; });
    type(QStringLiteral("title:d"));
    type(QStringLiteral("title:de"));
    type(QStringLiteral("title:de words"));
    EXPECT_EQ(announced, 1);
}

TEST_F(LibraryViewModelSearchTest, DropsResultsOutsideTheSelectedTagAndNoOthers)
{
    addPaper(m_a, m_a, {QStringLiteral("x"), QStringLiteral("_currently_reading")});
    addPaper(m_b, m_b);
    load();
    find(m_graph, {m_b, m_a});
    EXPECT_EQ(foundAfterFilters(), (QStringList{m_b, m_a}));
    vm().currentSidebarItem = SidebarItem::ofTag(QStringLiteral("x"));
    waitUntil(vm().isLoading, false);
    EXPECT_EQ(foundAfterFilters(), QStringList{m_a});
    vm().currentSidebarItem = SidebarItem{.kind = SidebarItem::Kind::CurrentlyReading, .tag = {}};
    waitUntil(vm().isLoading, false);
    EXPECT_EQ(foundAfterFilters(), (QStringList{m_b, m_a})) << "only tags narrow a search";
}

TEST_F(LibraryViewModelSearchTest, NarrowsResultsByTheFilters)
{
    addPaper(m_a, m_a, {}, QStringLiteral("Smith"), 2019);
    addPaper(m_b, m_b, {}, QStringLiteral("Smith"), 2020);
    load();
    find(QStringLiteral("graph author:smith year:2020"), {m_a, m_b, QStringLiteral("unlisted")});
    EXPECT_EQ(foundAfterFilters(), QStringList{m_b});
    EXPECT_EQ(found().size(), 3);
}

TEST_F(LibraryViewModelSearchTest, DropsTheResultsOfAPaperThatIsRemoved)
{
    const Paper gone = addPaper(m_a, m_a);
    addPaper(m_b, m_b);
    load();
    find(m_graph, {m_a, m_b});
    waitFor(vm().deletePaper(gone));
    EXPECT_EQ(found(), QStringList{m_b});
}

TEST_F(LibraryViewModelSearchTest, MayDieWhileASearchIsPendingOrRunning)
{
    type(m_graph);
    clock.advance(400ms);
    type(QStringLiteral("graphs"));
    model.reset();
    EXPECT_FALSE(clock.hasPendingCalls());
    search.answer(0, resultsFor({m_a}));
    QCoreApplication::processEvents();
}
