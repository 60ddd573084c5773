#include "app/LibraryViewModel.h"

#include "support/Gate.h"
#include "support/ViewModelFixture.h"

#include <csignal>
#include <thread>

class LibraryViewModelTest : public testing::Test, protected ViewModelFixture
{
protected:
    QStringList shown() { return idsOf(vm().papers); }
    void choose(const SidebarItem &item)
    {
        vm().currentSidebarItem = item;
        waitUntil(vm().isLoading, false);
    }
    void breakTable(const QString &table) { library.run(u"DROP TABLE " + table); }

    const QString m_a = QStringLiteral("a");
    const QString m_b = QStringLiteral("b");
    const QString m_c = QStringLiteral("c");
    const SidebarItem m_reading{.kind = SidebarItem::Kind::CurrentlyReading, .tag = {}};
    const SidebarItem m_recent{.kind = SidebarItem::Kind::RecentlyImported, .tag = {}};
};

TEST_F(LibraryViewModelTest, BeginsEmptyWithAllPapersSelected)
{
    EXPECT_TRUE(vm().papers.value().isEmpty());
    EXPECT_EQ(vm().currentSidebarItem.value(), SidebarItem());
    EXPECT_EQ(vm().queryText.value(), QString());
    EXPECT_FALSE(vm().isLoading);
    EXPECT_FALSE(vm().isSearching);
    EXPECT_EQ(vm().errorMessage.value(), std::nullopt);
}

TEST_F(LibraryViewModelTest, ShowsEveryPaperInTheStoresOrder)
{
    addPaper(m_b, QStringLiteral("beta"));
    addPaper(m_a, QStringLiteral("Alpha"));
    load();
    EXPECT_EQ(shown(), (QStringList{m_a, m_b}));
    EXPECT_EQ(vm().filteredPapers.value(), vm().papers.value());
    EXPECT_FALSE(vm().isLoading);
}

TEST_F(LibraryViewModelTest, IsLoadingFromTheCallToTheAnswer)
{
    QCoro::Task<> loading = vm().loadPapers();
    EXPECT_TRUE(vm().isLoading);
    waitFor(std::move(loading));
    EXPECT_FALSE(vm().isLoading);
}

TEST_F(LibraryViewModelTest, LoadsThePapersOfATagWhenItIsSelected)
{
    addPaper(m_a, m_a, {QStringLiteral("Topology")});
    addPaper(m_b, m_b, {QStringLiteral("Analysis")});
    load();
    choose(SidebarItem::ofTag(QStringLiteral("Topology")));
    EXPECT_EQ(shown(), QStringList{m_a});
}

TEST_F(LibraryViewModelTest, ListsWhatIsCurrentlyReadAndHidesItsTag)
{
    addPaper(m_a, m_a, {QStringLiteral("_currently_reading"), QStringLiteral("Topology")});
    addPaper(m_b, m_b, {QStringLiteral("Topology")});
    load();
    choose(m_reading);
    EXPECT_EQ(shown(), QStringList{m_a});
    EXPECT_EQ(vm().visibleTags.value(), QStringList{QStringLiteral("Topology")});
    EXPECT_TRUE(vm().allTags.value().contains(QStringLiteral("_currently_reading")));
}

TEST_F(LibraryViewModelTest, ShowsNothingRecentBeforeAnyImport)
{
    addPaper(m_a, m_a);
    load();
    choose(m_recent);
    EXPECT_TRUE(shown().isEmpty());
    EXPECT_EQ(vm().errorMessage.value(), std::nullopt);
}

TEST_F(LibraryViewModelTest, ListsThePapersSinceTheLastImportNewestFirst)
{
    for (const auto &[id, date] : {std::pair(m_a, "2025-01-01T00:00:00Z"),
                                   {m_b, "2025-02-01T00:00:00Z"},
                                   {m_c, "2025-03-01T00:00:00Z"}}) {
        addPaper(id, id);
        library.run(QStringLiteral("UPDATE papers SET date_indexed = ? WHERE id = ?"),
                    {QString::fromLatin1(date), id});
    }
    preferences.setText(QLatin1String(kLastImportDateKey), QStringLiteral("2025-02-01T00:00:00Z"));
    choose(m_recent);
    EXPECT_EQ(shown(), (QStringList{m_c, m_b}));
}

TEST_F(LibraryViewModelTest, PublishesWhatItLoadedInOneBatch)
{
    addPaper(m_a, m_a);
    addPaper(m_b, m_b);
    load();
    model.reset(); // its work in the background is done then
    ASSERT_EQ(publisher.batches().size(), 1);
    EXPECT_EQ(idsOf(publisher.batches().first()), (QStringList{m_a, m_b}));
    EXPECT_EQ(publisher.wholeLibraries(), 1);
}

TEST_F(LibraryViewModelTest, PublishesThePapersOfATagAsAPartOfTheLibrary)
{
    addPaper(m_a, m_a);
    addPaper(m_b, m_b);
    choose(SidebarItem::ofTag(QStringLiteral("Unused")));
    model.reset();
    ASSERT_EQ(publisher.batches().size(), 1);
    EXPECT_TRUE(publisher.batches().first().isEmpty());
    EXPECT_EQ(publisher.wholeLibraries(), 0);
}

TEST_F(LibraryViewModelTest, KeepsThePapersWhenALoadFails)
{
    addPaper(m_a, m_a);
    load();
    breakTable(QStringLiteral("tags"));
    waitFor(vm().loadPapers());
    EXPECT_EQ(shown(), QStringList{m_a});
    EXPECT_EQ(vm().errorMessage.value(), QStringLiteral("no such table: tags"));
    EXPECT_FALSE(vm().isLoading);
}

TEST_F(LibraryViewModelTest, OnlyLogsWhenTheTagsCannotBeRead)
{
    addPaper(m_a, m_a, {QStringLiteral("Topology")});
    load();
    breakTable(QStringLiteral("tag_definitions"));
    testing::internal::CaptureStdout();
    waitFor(vm().loadTags());
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "Error rebuilding tags: no such table: tag_definitions\n");
    EXPECT_EQ(vm().allTags.value(), QStringList{QStringLiteral("Topology")});
    EXPECT_EQ(vm().errorMessage.value(), std::nullopt);
}

TEST_F(LibraryViewModelTest, AnnouncesAReloadOnlyWhenSomethingIsDifferent)
{
    addPaper(m_a, m_a);
    load();
    int announced = 0;
    const auto papersObserver = vm().papers.addNotifier([&] { ++announced; });
    const auto filteredObserver = vm().filteredPapers.addNotifier([&] { ++announced; });
    const auto tagsObserver = vm().allTags.addNotifier([&] { ++announced; });
    load();
    EXPECT_EQ(announced, 0);
    addPaper(m_b, m_b);
    load();
    EXPECT_EQ(announced, 2) << "papers and filteredPapers";
}

TEST_F(LibraryViewModelTest, AnnouncesThatTheLastPapersAreGone)
{
    addPaper(m_a, m_a);
    load();
    library.run(QStringLiteral("DELETE FROM papers"));
    int announced = 0;
    const auto observer = vm().filteredPapers.addNotifier([&] { ++announced; });
    load();
    EXPECT_EQ(announced, 1);
    EXPECT_TRUE(vm().papers.value().isEmpty());
}

TEST_F(LibraryViewModelTest, ShowsTheLastSelectionWhateverLoadsRanBefore)
{
    addPaper(m_a, m_a, {QStringLiteral("x")});
    addPaper(m_b, m_b, {QStringLiteral("y")});
    Gate gate(library.db);
    vm().loadPapers();
    vm().currentSidebarItem = SidebarItem::ofTag(QStringLiteral("x"));
    vm().currentSidebarItem = SidebarItem::ofTag(QStringLiteral("y"));
    QList<QStringList> seen;
    const auto observer = vm().papers.addNotifier([&] { seen.append(shown()); });
    gate.open();
    waitUntil(vm().isLoading, false);
    EXPECT_EQ(seen.size(), 1);
    EXPECT_EQ(shown(), QStringList{m_b});
}

TEST_F(LibraryViewModelTest, KeepsTheSelectedPaperInStepWithTheLibrary)
{
    vm().select(addPaper(m_a, QStringLiteral("Old")));
    library.run(QStringLiteral("UPDATE papers SET title = 'New'"));
    choose(m_recent); // which does not list it
    EXPECT_EQ(vm().selectedPaper.value()->title, u"New");
    library.run(QStringLiteral("DELETE FROM papers"));
    load();
    EXPECT_EQ(vm().selectedPaper.value(), std::nullopt);
}

TEST_F(LibraryViewModelTest, ReadsThePaperThatASelectedSearchResultStandsFor)
{
    const Paper paper = addPaper(m_a, QStringLiteral("A"), {QStringLiteral("tag")});
    Paper substitute;
    substitute.id = m_a;
    substitute.title = paper.title;
    vm().select(substitute);
    waitUntil(vm().selectedPaper, [](const auto &shown) { return !shown->tags.isEmpty(); });
    EXPECT_EQ(vm().selectedPaper.value()->tags, paper.tags);
}

TEST_F(LibraryViewModelTest, LeavesAPaperThatIsSelectedMeanwhileAlone)
{
    const Paper first = addPaper(m_a, m_a);
    const Paper second = addPaper(m_b, m_b);
    vm().select(first);
    Gate gate(library.db);
    QCoro::Task<> loading = vm().loadPapers();
    vm().select(second);
    gate.open();
    waitFor(std::move(loading));
    EXPECT_EQ(vm().selectedPaper.value(), second);
}

TEST_F(LibraryViewModelTest, AsksBeforeAPaperIsRemoved)
{
    const Paper paper = addPaper(m_a, m_a);
    vm().requestDelete(paper);
    EXPECT_EQ(vm().confirmDeletePaper.value(), paper);
    EXPECT_TRUE(this->paper(m_a));
}

TEST_F(LibraryViewModelTest, TakesARemovedPaperOutOfItsPlaceAndClearsTheDetails)
{
    addPaper(m_a, m_a);
    const Paper gone = addPaper(m_b, m_b, {QStringLiteral("Only here")});
    addPaper(m_c, m_c);
    load();
    vm().select(gone);
    waitFor(vm().deletePaper(gone));
    EXPECT_EQ(shown(), (QStringList{m_a, m_c}));
    EXPECT_EQ(idsOf(vm().filteredPapers), (QStringList{m_a, m_c}));
    EXPECT_EQ(vm().selectedPaper.value(), std::nullopt);
    EXPECT_TRUE(vm().allTags.value().isEmpty()) << "the last paper of the tag is gone";
    EXPECT_EQ(paper(m_b), std::nullopt);
}

TEST_F(LibraryViewModelTest, KeepsAnotherSelectionWhenAPaperIsRemoved)
{
    const Paper kept = addPaper(m_a, m_a);
    const Paper gone = addPaper(m_b, m_b);
    load();
    vm().select(kept);
    waitFor(vm().deletePaper(gone));
    EXPECT_EQ(vm().selectedPaper.value(), kept);
}

TEST_F(LibraryViewModelTest, KeepsThePapersWhenARemovalFails)
{
    const Paper paper = addPaper(m_a, m_a);
    load();
    vm().select(paper);
    breakTable(QStringLiteral("bookmarks"));
    breakTable(QStringLiteral("fts_papers"));
    waitFor(vm().deletePaper(paper));
    EXPECT_EQ(shown(), QStringList{m_a});
    EXPECT_EQ(vm().selectedPaper.value(), paper);
    EXPECT_TRUE(vm().errorMessage.value());
}

TEST_F(LibraryViewModelTest, DoesNotBringARemovedPaperBackFromALoadThatReadIt)
{
    const Paper paper = addPaper(m_a, m_a);
    load();
    QCoro::Task<> deleting = vm().deletePaper(paper);
    vm().loadPapers();
    waitFor(std::move(deleting));
    EXPECT_TRUE(shown().isEmpty());
    waitUntil(vm().isLoading, false);
    EXPECT_TRUE(shown().isEmpty());
}

TEST_F(LibraryViewModelTest, CountsUpTheRequestsForFocusInTheSearchField)
{
    vm().requestSearchFocus();
    vm().requestSearchFocus();
    EXPECT_EQ(vm().searchFocusRequest.value(), 2);
}

TEST_F(LibraryViewModelTest, MayDieWhileALoadIsRunning)
{
    addPaper(m_a, m_a);
    std::optional<Gate> gate(library.db);
    vm().loadPapers();
    vm().loadTags();
    std::jthread opener([&] { gate->open(); });
    model.reset();
    EXPECT_TRUE(paper(m_a));
}

TEST_F(LibraryViewModelTest, EndsTheProgramWhenCalledOnAnotherThread)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    // The program that dies leaves its library behind: inside of this one's, which goes with the test.
    qputenv("TMPDIR", library.folder.path().toLocal8Bit());
    EXPECT_EXIT(std::jthread([&] { vm().requestSearchFocus(); }), testing::KilledBySignal(SIGABRT), "");
    qunsetenv("TMPDIR");
}
