#include "app/LibraryViewModel.h"

#include "support/ViewModelFixture.h"

class LibraryViewModelTagsTest : public testing::Test, protected ViewModelFixture
{
protected:
    void SetUp() override
    {
        addPaper(m_a, QStringLiteral("A deep one"), {m_topology});
        addPaper(m_b, QStringLiteral("B"), {m_untagged});
        load();
    }

    QStringList tagsOf(const QString &id)
    {
        QStringList tags = paper(id)->tags;
        tags.sort();
        return tags;
    }
    void choose(const SidebarItem &item)
    {
        vm().currentSidebarItem = item;
        waitUntil(vm().isLoading, false);
    }
    SidebarItem selected() { return vm().currentSidebarItem; }
    QStringList shown() { return idsOf(vm().papers); }
    void failChangesOf(const QString &table)
    {
        library.run(u"CREATE TRIGGER broken BEFORE INSERT ON " + table +
                    u" BEGIN SELECT raise(ABORT, 'out of order'); END");
    }

    const QString m_a = QStringLiteral("a");
    const QString m_b = QStringLiteral("b");
    const QString m_topology = QStringLiteral("Topology");
    const QString m_untagged = QStringLiteral("Untagged");
    const QString m_mine = QStringLiteral("mine");
};

TEST_F(LibraryViewModelTagsTest, CreatesATagOfTheTrimmedName)
{
    waitFor(vm().createTag(QStringLiteral(" \tmine  ")));
    EXPECT_EQ(vm().visibleTags.value(), (QStringList{m_topology, m_untagged, m_mine}));
}

TEST_F(LibraryViewModelTagsTest, DoesNothingWithABlankName)
{
    library.statements.clear();
    for (const QString &blank : {QString(), QStringLiteral(" \t ")}) {
        waitFor(vm().createTag(blank));
        waitFor(vm().renameTag(m_topology, blank));
        waitFor(vm().tagVisiblePapers(blank));
        waitFor(vm().addTag(m_a, blank));
    }
    EXPECT_EQ(library.statements.all(), QStringList());
    EXPECT_EQ(vm().errorMessage.value(), std::nullopt);
}

TEST_F(LibraryViewModelTagsTest, RefusesReservedNamesWithAReason)
{
    const QString reserved = QStringLiteral(" _mine");
    const QString reason = tagNameProblem(reserved);
    EXPECT_FALSE(reason.isEmpty());
    const auto expectRefusal = [&](QCoro::Task<> task) {
        waitFor(std::move(task));
        EXPECT_EQ(vm().errorMessage.value(), reason);
        vm().errorMessage = std::nullopt;
    };
    library.statements.clear();
    expectRefusal(vm().createTag(reserved));
    expectRefusal(vm().renameTag(m_topology, reserved));
    expectRefusal(vm().renameTag(QStringLiteral("_currently_reading"), m_mine));
    expectRefusal(vm().deleteTag(QStringLiteral("_currently_reading")));
    expectRefusal(vm().tagVisiblePapers(reserved));
    expectRefusal(vm().addTag(m_a, reserved));
    EXPECT_EQ(library.statements.all(), QStringList());
}

TEST_F(LibraryViewModelTagsTest, FindsNoProblemInOrdinaryNames)
{
    EXPECT_EQ(tagNameProblem(QStringLiteral("under_score")), QString());
    EXPECT_NE(tagNameProblem(QStringLiteral("  ")), QString());
}

TEST_F(LibraryViewModelTagsTest, RenamesATagEverywhereAndReloads)
{
    waitFor(vm().renameTag(m_topology, QStringLiteral(" mine ")));
    EXPECT_EQ(vm().visibleTags.value(), (QStringList{m_untagged, m_mine}));
    EXPECT_EQ(vm().papers.value().first().tags, QStringList{m_mine});
}

TEST_F(LibraryViewModelTagsTest, FollowsTheSelectedTagToItsNewName)
{
    choose(SidebarItem::ofTag(m_topology));
    waitFor(vm().renameTag(m_topology, m_mine));
    EXPECT_EQ(selected(), SidebarItem::ofTag(m_mine));
    EXPECT_EQ(shown(), QStringList{m_a});
}

TEST_F(LibraryViewModelTagsTest, KeepsAnotherSelectionWhenATagIsRenamedOrDeleted)
{
    choose(SidebarItem::ofTag(m_untagged));
    waitFor(vm().renameTag(m_topology, m_mine));
    waitFor(vm().deleteTag(m_mine));
    EXPECT_EQ(selected(), SidebarItem::ofTag(m_untagged));
}

TEST_F(LibraryViewModelTagsTest, KnowsTheNewNameBeforeItIsSelected)
{
    choose(SidebarItem::ofTag(m_topology));
    bool wasListed = false;
    const auto observer = vm().currentSidebarItem.addNotifier(
        [&] { wasListed = vm().visibleTags.value().contains(selected().tag); });
    waitFor(vm().renameTag(m_topology, m_mine));
    EXPECT_TRUE(wasListed);
}

TEST_F(LibraryViewModelTagsTest, KeepsEveryPaperWhenATagIsDeleted)
{
    waitFor(vm().deleteTag(m_topology));
    EXPECT_EQ(shown(), (QStringList{m_a, m_b}));
    EXPECT_EQ(tagsOf(m_a), QStringList());
    EXPECT_EQ(vm().visibleTags.value(), QStringList{m_untagged});
}

TEST_F(LibraryViewModelTagsTest, FallsBackToAllPapersFromADeletedTag)
{
    choose(SidebarItem::ofTag(m_topology));
    waitFor(vm().deleteTag(m_topology));
    EXPECT_EQ(selected(), SidebarItem());
    EXPECT_EQ(shown(), (QStringList{m_a, m_b}));
}

TEST_F(LibraryViewModelTagsTest, ShowsWhyATagCannotBeCreated)
{
    failChangesOf(QStringLiteral("tag_definitions"));
    waitFor(vm().createTag(m_mine));
    EXPECT_EQ(vm().errorMessage.value(), QStringLiteral("out of order"));
}

TEST_F(LibraryViewModelTagsTest, ShowsWhyATagCannotBeRenamedOrDeleted)
{
    choose(SidebarItem::ofTag(m_topology));
    library.run(QStringLiteral("DROP TABLE tag_definitions"));
    waitFor(vm().renameTag(m_topology, m_mine));
    EXPECT_EQ(vm().errorMessage.value(), QStringLiteral("no such table: tag_definitions"));
    vm().errorMessage = std::nullopt;
    waitFor(vm().deleteTag(m_topology));
    EXPECT_EQ(vm().errorMessage.value(), QStringLiteral("no such table: tag_definitions"));
    EXPECT_EQ(selected(), SidebarItem::ofTag(m_topology));
}

TEST_F(LibraryViewModelTagsTest, TagsTheVisiblePapersAndNoOthersByTheTrimmedName)
{
    vm().queryText = QStringLiteral("title:deep");
    waitFor(vm().tagVisiblePapers(QStringLiteral("  mine ")));
    EXPECT_EQ(tagsOf(m_a), (QStringList{m_topology, m_mine}));
    EXPECT_EQ(tagsOf(m_b), QStringList{m_untagged});
    EXPECT_TRUE(vm().visibleTags.value().contains(m_mine)) << "tags are reloaded";
    EXPECT_TRUE(vm().papers.value().first().tags.contains(m_mine)) << "papers are reloaded";
}

TEST_F(LibraryViewModelTagsTest, EndsTheUntaggedStateOfPapersThatGetATag)
{
    waitFor(vm().tagVisiblePapers(m_mine));
    EXPECT_EQ(tagsOf(m_b), QStringList{m_mine});
}

TEST_F(LibraryViewModelTagsTest, TaggingWithUntaggedRemovesNothing)
{
    waitFor(vm().tagVisiblePapers(m_untagged));
    EXPECT_EQ(tagsOf(m_a), (QStringList{m_topology, m_untagged}));
    EXPECT_EQ(tagsOf(m_b), QStringList{m_untagged});
}

TEST_F(LibraryViewModelTagsTest, GoesOnAfterAPaperThatCannotBeTagged)
{
    library.run(QStringLiteral("CREATE TRIGGER broken BEFORE INSERT ON tags WHEN NEW.paper_id = 'a' "
                               "BEGIN SELECT raise(ABORT, 'out of order'); END"));
    testing::internal::CaptureStdout();
    waitFor(vm().tagVisiblePapers(m_mine));
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Failed to tag a: out of order\n");
    EXPECT_EQ(tagsOf(m_b), QStringList{m_mine});
    EXPECT_EQ(vm().errorMessage.value(), std::nullopt);
}

TEST_F(LibraryViewModelTagsTest, RemovesATagFromTheVisiblePapersThatCarryIt)
{
    library.publisher.published.clear();
    library.statements.clear();
    waitFor(vm().removeTagFromVisiblePapers(m_topology));
    EXPECT_EQ(tagsOf(m_a), QStringList());
    EXPECT_EQ(library.statements.beginningWith(QStringLiteral("DELETE FROM tags")).size(), 1);
    EXPECT_FALSE(vm().visibleTags.value().contains(m_topology));
    EXPECT_EQ(library.publisher.published.first().id, m_a) << "the desktop's search hears of it";
    EXPECT_TRUE(library.publisher.published.first().tags.isEmpty());
}

TEST_F(LibraryViewModelTagsTest, GoesOnAfterAPaperThatATagCannotBeRemovedFrom)
{
    waitFor(vm().tagVisiblePapers(m_mine));
    library.run(QStringLiteral("CREATE TRIGGER broken BEFORE DELETE ON tags WHEN OLD.paper_id = 'a' "
                               "BEGIN SELECT raise(ABORT, 'out of order'); END"));
    testing::internal::CaptureStdout();
    waitFor(vm().removeTagFromVisiblePapers(m_mine));
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Failed to remove tag from a: out of order\n");
    EXPECT_EQ(tagsOf(m_b), QStringList());
}

TEST_F(LibraryViewModelTagsTest, ListsTheTagsOfTheVisiblePapersOnly)
{
    waitFor(vm().setCurrentlyReading(m_a, true));
    EXPECT_EQ(vm().tagsOnVisiblePapers(), (QStringList{m_topology, m_untagged}));
    vm().queryText = QStringLiteral("title:deep");
    EXPECT_EQ(vm().tagsOnVisiblePapers(), QStringList{m_topology});
    vm().queryText = QStringLiteral("title:none");
    EXPECT_TRUE(vm().tagsOnVisiblePapers().isEmpty());
}

TEST_F(LibraryViewModelTagsTest, RetagsTheLibraryAndTellsHowFarItIs)
{
    retagPaper = [this](const Paper &paper, auto) {
        return paper.id == m_a ? QStringList{QStringLiteral("Analysis")} : paper.tags;
    };
    QList<double> progress;
    const auto observer = vm().retagProgress.addNotifier([&] { progress.append(vm().retagProgress); });
    QCoro::Task<> retagging = vm().retagLibrary();
    EXPECT_TRUE(vm().isRetagging);
    EXPECT_EQ(vm().retagResult.value(), std::nullopt);
    waitFor(std::move(retagging));
    EXPECT_FALSE(vm().isRetagging);
    EXPECT_EQ(vm().retagResult.value(), QStringLiteral("Retagged 1 of 2 papers."));
    EXPECT_EQ(progress, (QList<double>{0.5, 1}));
    EXPECT_EQ(vm().retagCount.value(), 2);
    EXPECT_EQ(vm().retagTotal.value(), 2);
    EXPECT_EQ(vm().papers.value().first().tags, QStringList{QStringLiteral("Analysis")});
    EXPECT_EQ(vm().visibleTags.value(), (QStringList{QStringLiteral("Analysis"), m_untagged}));
}

TEST_F(LibraryViewModelTagsTest, WritesNothingIntoAConsistentLibraryButPrunesUnusedTags)
{
    waitFor(vm().createTag(m_mine));
    library.statements.clear();
    waitFor(vm().retagLibrary());
    EXPECT_EQ(vm().retagResult.value(), QStringLiteral("Retagged 0 of 2 papers."));
    EXPECT_EQ(library.statements.beginningWith(QStringLiteral("INSERT")), QStringList());
    EXPECT_EQ(library.statements.beginningWith(QStringLiteral("DELETE")).size(), 1);
    EXPECT_FALSE(vm().visibleTags.value().contains(m_mine));
}

TEST_F(LibraryViewModelTagsTest, SaysWhyARetagFailed)
{
    retagPaper = [](const Paper &, auto) {
        return QStringList{QStringLiteral("new")};
    };
    failChangesOf(QStringLiteral("tags"));
    waitFor(vm().retagLibrary());
    EXPECT_EQ(vm().retagResult.value(), QStringLiteral("Retag failed: out of order"));
    EXPECT_FALSE(vm().isRetagging);
    EXPECT_EQ(tagsOf(m_a), QStringList{m_topology});
}

TEST_F(LibraryViewModelTagsTest, RetagsOnceAtATime)
{
    QCoro::Task<> first = vm().retagLibrary();
    QCoro::Task<> second = vm().retagLibrary();
    waitFor(std::move(second));
    EXPECT_TRUE(vm().isRetagging);
    waitFor(std::move(first));
}

TEST_F(LibraryViewModelTagsTest, MayDieWhileItRetags)
{
    retagPaper = [](const Paper &paper, std::stop_token stop) {
        while (!stop.stop_requested())
            std::this_thread::yield();
        return paper.tags;
    };
    vm().retagLibrary();
    model.reset();
    QCoreApplication::processEvents();
    EXPECT_EQ(tagsOf(m_a), QStringList{m_topology});
}
