#include "app/RetagFlow.h"

#include "app/TagMerge.h"
#include "store/DatabaseManager.h"
#include "store/NativeLibraryService.h"
#include "store/SystemSearchPublisher.h"
#include "support/Printing.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace
{

struct RecordingPublisher : SystemSearchPublisher {
    void publish(const Paper &paper) override { published.append(paper); }
    void publish(const QList<Paper> &papers) override { published.append(papers); }
    void withdraw(const QString &) override {}

    QList<Paper> published;
};

} // namespace

class RetagFlowTest : public testing::Test
{
protected:
    void addPaper(const QString &id, const QStringList &tags)
    {
        const SqlValues values{id, u"Title " + id, u"/papers/" + id};
        ASSERT_TRUE(
            m_db.execute(QStringLiteral("INSERT INTO papers (id, title, filepath) VALUES (?, ?, ?)"), values)
                .result());
        ASSERT_TRUE(m_db.replaceTags(id, tags).result());
    }
    Result<RetagCount> retag(const QMap<QString, QStringList> &newTags, std::stop_token stop = {})
    {
        RetagFlow flow({.db = m_db,
                        .library = m_library,
                        .publisher = m_publisher,
                        .retagPaper = [this, newTags](const Paper &paper, auto) {
                            m_meanwhile();
                            return newTags.value(paper.id);
                        }});
        return flow.run(stop, [this](const RetagCount &count) { m_progress.append(count.done); });
    }
    QStringList tagsOf(const QString &id)
    {
        QStringList tags = m_library.paperById(id).result()->value().tags;
        tags.sort();
        return tags;
    }
    QStringList tagNames() { return *m_library.allTagNames().result(); }

    TemporaryFolder m_folder;
    RecordingPublisher m_publisher;
    DatabaseManager m_db{m_folder.path(QStringLiteral("library.db"))};
    NativeLibraryService m_library{m_db, m_publisher};
    QList<int> m_progress;
    std::function<void()> m_meanwhile = [] {
    }; ///< what others do while a paper's tags are computed
};

TEST_F(RetagFlowTest, ReplacesTheTagsThatDifferAndPublishesThosePapers)
{
    addPaper(QStringLiteral("a"), {QStringLiteral("Topology")});
    addPaper(QStringLiteral("b"), {QStringLiteral("Geometry")});
    const auto count = retag({{QStringLiteral("a"), {QStringLiteral("Analysis"), QStringLiteral("mine")}},
                              {QStringLiteral("b"), {QStringLiteral("Geometry")}}});
    ASSERT_TRUE(count);
    EXPECT_EQ(count->summary(), u"Retagged 1 of 2 papers.");
    EXPECT_EQ(tagsOf(QStringLiteral("a")), (QStringList{QStringLiteral("Analysis"), QStringLiteral("mine")}));
    ASSERT_EQ(m_publisher.published.size(), 1);
    EXPECT_EQ(m_publisher.published.first().id, u"a");
    EXPECT_EQ(m_publisher.published.first().tags,
              (QStringList{QStringLiteral("Analysis"), QStringLiteral("mine")}));
    EXPECT_EQ(m_progress, (QList<int>{0, 1, 2}));
}

TEST_F(RetagFlowTest, WritesNothingWhenOnlyTheOrderDiffers)
{
    addPaper(QStringLiteral("a"), {QStringLiteral("Analysis"), QStringLiteral("Topology")});
    const auto count =
        retag({{QStringLiteral("a"), {QStringLiteral("Topology"), QStringLiteral("Analysis")}}});
    EXPECT_EQ(count->changed, 0);
    EXPECT_TRUE(m_publisher.published.isEmpty());
}

TEST_F(RetagFlowTest, OfAConsistentLibraryStillPrunesUnusedDefinitions)
{
    addPaper(QStringLiteral("a"), {QStringLiteral("Topology")});
    ASSERT_TRUE(m_library.createTag(QStringLiteral("Topology")).result());
    ASSERT_TRUE(m_library.createTag(QStringLiteral("unused")).result());
    EXPECT_EQ(retag({{QStringLiteral("a"), {QStringLiteral("Topology")}}})->changed, 0);
    EXPECT_EQ(tagNames(), QStringList{QStringLiteral("Topology")});
}

TEST_F(RetagFlowTest, EndsAtTheFirstFailureAndKeepsThatPapersTags)
{
    addPaper(QStringLiteral("a"), {QStringLiteral("old")});
    ASSERT_TRUE(
        m_db.execute(QStringLiteral("CREATE TRIGGER refuse BEFORE INSERT ON tags WHEN NEW.tag = 'bad' "
                                    "BEGIN SELECT RAISE(ABORT, 'not this one'); END"))
            .result());
    const auto count = retag({{QStringLiteral("a"), {QStringLiteral("good"), QStringLiteral("bad")}}});
    ASSERT_FALSE(count);
    EXPECT_EQ(count.error().description, u"not this one");
    EXPECT_EQ(tagsOf(QStringLiteral("a")), QStringList{QStringLiteral("old")});
}

TEST_F(RetagFlowTest, KeepsWhatOthersDoToTheTagsMeanwhile)
{
    addPaper(QStringLiteral("a"), {QStringLiteral("mine"), QStringLiteral("gone soon")});
    m_meanwhile = [this] {
        ASSERT_TRUE(m_library.addTag(QStringLiteral("a"), QStringLiteral("new")).result());
        ASSERT_TRUE(m_library.removeTag(QStringLiteral("a"), QStringLiteral("gone soon")).result());
    };
    const QStringList computed{QStringLiteral("mine"), QStringLiteral("gone soon"),
                               QStringLiteral("Topology")};
    ASSERT_TRUE(retag({{QStringLiteral("a"), computed}}));
    EXPECT_EQ(tagsOf(QStringLiteral("a")),
              (QStringList{QStringLiteral("Topology"), QStringLiteral("mine"), QStringLiteral("new")}));
}

TEST_F(RetagFlowTest, LeavesOutAPaperThatIsRemovedMeanwhile)
{
    addPaper(QStringLiteral("a"), {QStringLiteral("old")});
    m_meanwhile = [this] {
        ASSERT_TRUE(m_library.deletePaper(QStringLiteral("a")).result());
    };
    const auto count = retag({{QStringLiteral("a"), {QStringLiteral("new")}}});
    ASSERT_TRUE(count);
    EXPECT_EQ(count->changed, 0);
}

TEST(TagMerge, DropsUntaggedWhereAVisibleTagWasGivenMeanwhile)
{
    const QStringList untagged{QStringLiteral("Untagged")};
    EXPECT_EQ(mergedTags({}, untagged, {QStringLiteral("mine")}), QStringList{QStringLiteral("mine")});
    EXPECT_EQ(mergedTags({}, untagged, {QStringLiteral("_currently_reading")}),
              (QStringList{QStringLiteral("Untagged"), QStringLiteral("_currently_reading")}));
}

TEST_F(RetagFlowTest, StopsBetweenTwoPapers)
{
    addPaper(QStringLiteral("a"), {QStringLiteral("old")});
    std::stop_source stop;
    stop.request_stop();
    const auto count = retag({{QStringLiteral("a"), {QStringLiteral("new")}}}, stop.get_token());
    ASSERT_FALSE(count);
    EXPECT_TRUE(isCancelled(count.error()));
    EXPECT_EQ(tagsOf(QStringLiteral("a")), QStringList{QStringLiteral("old")});
}
