// One paper's tags, attributes and bookmarks.
#include "app/LibraryViewModel.h"

#include "support/Gate.h"
#include "support/ViewModelFixture.h"

class LibraryViewModelPapersTest : public testing::Test, protected ViewModelFixture
{
protected:
    void SetUp() override
    {
        vm().select(addPaper(m_a, QStringLiteral("Old"), {QStringLiteral("Untagged")}));
        addPaper(m_b, QStringLiteral("Other"));
        load();
    }

    const Paper &selected() { return *vm().selectedPaper.value(); }
    Paper shown(const QString &id)
    {
        for (const Paper &paper : vm().papers.value()) {
            if (paper.id == id)
                return paper;
        }
        return {};
    }
    void addBookmark(const QString &id, const QString &paperId, qint64 page)
    {
        const Bookmark bookmark{.id = id,
                                .paperId = paperId,
                                .text = QStringLiteral("text"),
                                .page = page,
                                .label = {},
                                .createdAt = QStringLiteral("2025-01-01T00:00:00Z")};
        ASSERT_TRUE(library.service.createBookmark(bookmark).result());
    }
    QStringList bookmarkIds()
    {
        QStringList ids;
        for (const Bookmark &bookmark : vm().bookmarks.value())
            ids.append(bookmark.id);
        return ids;
    }

    const QString m_a = QStringLiteral("a");
    const QString m_b = QStringLiteral("b");
    const QString m_mine = QStringLiteral("mine");
};

TEST_F(LibraryViewModelPapersTest, ShowsANewTagEverywhere)
{
    waitFor(vm().addTag(m_a, QStringLiteral(" mine ")));
    EXPECT_EQ(selected().tags, QStringList{m_mine}) << "it is untagged no longer";
    EXPECT_EQ(shown(m_a).tags, QStringList{m_mine});
    EXPECT_EQ(vm().visibleTags.value(), QStringList{m_mine});
}

TEST_F(LibraryViewModelPapersTest, ShowsARemovedTagGoneEverywhere)
{
    waitFor(vm().addTag(m_a, m_mine));
    waitFor(vm().removeTag(m_a, m_mine));
    EXPECT_TRUE(selected().tags.isEmpty());
    EXPECT_TRUE(shown(m_a).tags.isEmpty());
    EXPECT_TRUE(vm().visibleTags.value().isEmpty());
}

TEST_F(LibraryViewModelPapersTest, MarksAPaperAsBeingReadAndBack)
{
    waitFor(vm().setCurrentlyReading(m_a, true));
    EXPECT_TRUE(selected().tags.contains(QStringLiteral("_currently_reading")));
    EXPECT_TRUE(selected().tags.contains(QStringLiteral("Untagged"))) << "it has no visible tag yet";
    waitFor(vm().setCurrentlyReading(m_a, false));
    EXPECT_EQ(selected().tags, QStringList{QStringLiteral("Untagged")});
}

TEST_F(LibraryViewModelPapersTest, ShowsAnEditEverywhere)
{
    waitFor(vm().updatePaper(m_a, {.title = QStringLiteral("New"), .authors = QString(), .year = 2020}));
    EXPECT_EQ(selected().title, u"New");
    EXPECT_EQ(selected().year, 2020);
    EXPECT_EQ(shown(m_a), selected());
}

TEST_F(LibraryViewModelPapersTest, LeavesTheFieldsOfAnEditThatAreAbsent)
{
    waitFor(vm().updatePaper(m_a, {.title = {}, .authors = QStringLiteral("Smith"), .year = {}}));
    EXPECT_EQ(selected().title, u"Old");
    EXPECT_EQ(selected().authors, u"Smith");
    EXPECT_EQ(selected().year, std::nullopt);
}

TEST_F(LibraryViewModelPapersTest, KeepsThePaperThatWasSelectedMeanwhile)
{
    const Paper other = *paper(m_b);
    Gate gate(library.db);
    QCoro::Task<> editing =
        vm().updatePaper(m_a, {.title = QStringLiteral("New"), .authors = {}, .year = {}});
    vm().select(other);
    gate.open();
    waitFor(std::move(editing));
    EXPECT_EQ(selected(), other);
    EXPECT_EQ(shown(m_a).title, u"New");
}

TEST_F(LibraryViewModelPapersTest, ShowsTheEditedPaperBeforeTheListIsRead)
{
    QStringList seen;
    const auto selectedObserver =
        vm().selectedPaper.addNotifier([&] { seen.append(QStringLiteral("panel")); });
    const auto papersObserver = vm().papers.addNotifier([&] { seen.append(QStringLiteral("list")); });
    waitFor(vm().updatePaper(m_a, {.title = QStringLiteral("New"), .authors = {}, .year = {}}));
    EXPECT_EQ(seen, (QStringList{QStringLiteral("panel"), QStringLiteral("list")}));
}

TEST_F(LibraryViewModelPapersTest, ShowsWhyAnEditFailed)
{
    waitFor(vm().updatePaper(QStringLiteral("unknown"), {.title = m_mine, .authors = {}, .year = {}}));
    EXPECT_EQ(vm().errorMessage.value(), QStringLiteral("Paper not found after update"));
}

TEST_F(LibraryViewModelPapersTest, ShowsWhyATagCannotBeAddedOrRemoved)
{
    library.run(QStringLiteral("DROP TABLE tags"));
    waitFor(vm().addTag(m_a, m_mine));
    EXPECT_EQ(vm().errorMessage.value(), QStringLiteral("no such table: tags"));
    vm().errorMessage = std::nullopt;
    waitFor(vm().removeTag(m_a, m_mine));
    EXPECT_EQ(vm().errorMessage.value(), QStringLiteral("no such table: tags"));
    EXPECT_EQ(selected().title, u"Old");
}

TEST_F(LibraryViewModelPapersTest, LoadsTheBookmarksOfAPaper)
{
    addBookmark(QStringLiteral("2"), m_a, 7);
    addBookmark(QStringLiteral("1"), m_a, 3);
    addBookmark(QStringLiteral("3"), m_b, 1);
    waitFor(vm().loadBookmarks(m_a));
    EXPECT_EQ(bookmarkIds(), (QStringList{QStringLiteral("1"), QStringLiteral("2")}));
}

TEST_F(LibraryViewModelPapersTest, ShowsTheBookmarksThatWereAskedForLast)
{
    addBookmark(QStringLiteral("1"), m_a, 3);
    addBookmark(QStringLiteral("3"), m_b, 1);
    vm().loadBookmarks(m_a);
    waitFor(vm().loadBookmarks(m_b));
    EXPECT_EQ(bookmarkIds(), QStringList{QStringLiteral("3")});
}

TEST_F(LibraryViewModelPapersTest, DeletesABookmark)
{
    addBookmark(QStringLiteral("1"), m_a, 3);
    addBookmark(QStringLiteral("2"), m_a, 4);
    waitFor(vm().loadBookmarks(m_a));
    waitFor(vm().deleteBookmark(QStringLiteral("1")));
    EXPECT_EQ(bookmarkIds(), QStringList{QStringLiteral("2")});
}

TEST_F(LibraryViewModelPapersTest, ShowsWhyBookmarksCannotBeReadOrDeleted)
{
    library.run(QStringLiteral("DROP TABLE bookmarks"));
    waitFor(vm().loadBookmarks(m_a));
    EXPECT_EQ(vm().errorMessage.value(), QStringLiteral("no such table: bookmarks"));
    waitFor(vm().deleteBookmark(QStringLiteral("1")));
    EXPECT_EQ(vm().errorMessage.value(),
              QStringLiteral("Failed to remove bookmark: no such table: bookmarks"));
}

TEST_F(LibraryViewModelPapersTest, MayDieWhileAPaperChanges)
{
    vm().addTag(m_a, m_mine);
    vm().updatePaper(m_a, {.title = m_mine, .authors = {}, .year = {}});
    vm().loadBookmarks(m_a);
    model.reset();
    EXPECT_EQ(paper(m_a)->title, m_mine);
    QCoreApplication::processEvents();
}
