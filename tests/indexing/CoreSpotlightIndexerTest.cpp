#include "indexing/CoreSpotlightIndexer.h"

#include "store/Paper.h"
#include "support/Printing.h"

#include <QMap>
#include <gtest/gtest.h>

namespace
{
/// Keeps items as a desktop's index does.
class RecordingIndex : public SystemSearchIndex
{
public:
    std::optional<Error> failure;
    QMap<QString, SearchableItem> items;
    int calls = 0;
    bool isThere = true;

    bool isPresent() const override { return isThere; }
    void indexItems(const QList<SearchableItem> &added, Completion completion) override
    {
        ++calls;
        for (const SearchableItem &item : added)
            items.insert(item.uniqueIdentifier, item);
        completion(failure);
    }
    void replaceItems(const QList<SearchableItem> &all, Completion completion) override
    {
        items.clear();
        indexItems(all, completion);
    }
    void deleteItems(const QStringList &identifiers, Completion completion) override
    {
        for (const QString &identifier : identifiers)
            items.remove(identifier);
        completion(failure);
    }
};

Paper paper(const QString &id)
{
    return {.id = id,
            .title = QStringLiteral("Knots"),
            .authors = QStringLiteral("A. One,  B. Two"),
            .year = 1987,
            .pageCount = 3,
            .coverPath = {},
            .filepath = QStringLiteral("/x.pdf"),
            .tags = {QStringLiteral("Topology"), QStringLiteral("_currently_reading")}};
}

class CoreSpotlightIndexerTest : public testing::Test
{
protected:
    template <typename Call> std::string printedBy(Call call)
    {
        testing::internal::CaptureStdout();
        call();
        return testing::internal::GetCapturedStdout();
    }

    RecordingIndex m_index;
    CoreSpotlightIndexer m_indexer{m_index};
};

TEST_F(CoreSpotlightIndexerTest, MakesNoBatchWhereThereIsNoIndex)
{
    m_index.isThere = false;
    m_indexer.publish(QList{paper(QStringLiteral("id"))});
    m_indexer.publishLibrary({paper(QStringLiteral("id"))});
    EXPECT_EQ(m_index.calls, 0);
}

TEST_F(CoreSpotlightIndexerTest, TellsWhatIsKnownOfAPaper)
{
    m_indexer.publish(paper(QStringLiteral("id")));
    const SearchableItem expected{
        .uniqueIdentifier = QStringLiteral("id"),
        .domainIdentifier = QStringLiteral("org.quirevault.Quirevault.library"),
        .contentType = QStringLiteral("application/pdf"),
        .title = QStringLiteral("Knots"),
        .authorNames = {QStringLiteral("A. One"), QStringLiteral("B. Two")},
        .contentDescription = QStringLiteral("Research paper by A. One,  B. Two"),
        .keywords = {QStringLiteral("Topology"), QStringLiteral("_currently_reading")},
        .contentCreationDate = QDate(1987, 1, 1).startOfDay(),
    };
    EXPECT_EQ(m_index.items.value(QStringLiteral("id")), expected);
}

TEST_F(CoreSpotlightIndexerTest, GivesNoDateToAPaperWithoutAYear)
{
    Paper undated = paper(QStringLiteral("id"));
    undated.year.reset();
    EXPECT_FALSE(searchableItem(undated).contentCreationDate);
}

TEST_F(CoreSpotlightIndexerTest, GivesNoDateForAYearThatNoCalendarHas)
{
    for (const qint64 year :
         {qint64(0), std::numeric_limits<qint64>::max(), std::numeric_limits<qint64>::min()}) {
        Paper odd = paper(QStringLiteral("id"));
        odd.year = year;
        EXPECT_FALSE(searchableItem(odd).contentCreationDate) << year;
    }
}

TEST_F(CoreSpotlightIndexerTest, PublishesABatchInOneCallAndEachPaperOnce)
{
    const QList<Paper> papers{paper(QStringLiteral("a")), paper(QStringLiteral("b"))};
    m_indexer.publish(papers);
    EXPECT_EQ(m_index.calls, 1);
    m_indexer.publish(papers);
    EXPECT_EQ(m_index.items.size(), 2);
}

TEST_F(CoreSpotlightIndexerTest, PublishesPapersOfABatchAsItDoesSingleOnes)
{
    QList<Paper> papers{paper(QStringLiteral("a")), paper(QStringLiteral("b")), paper(QStringLiteral("c"))};
    papers[1].year = std::numeric_limits<qint64>::max();
    papers[2].year.reset();
    m_indexer.publish(papers);
    for (const Paper &one : papers)
        EXPECT_EQ(m_index.items.value(one.id), searchableItem(one));
}

TEST_F(CoreSpotlightIndexerTest, TakesBackWhatIsNotInTheLibrary)
{
    m_indexer.publish({paper(QStringLiteral("a")), paper(QStringLiteral("b"))});
    m_indexer.publishLibrary({paper(QStringLiteral("b"))});
    EXPECT_EQ(m_index.items.keys(), QStringList(QStringLiteral("b")));
}

TEST_F(CoreSpotlightIndexerTest, WithdrawsAPaper)
{
    m_indexer.publish({paper(QStringLiteral("a")), paper(QStringLiteral("b"))});
    m_indexer.withdraw(QStringLiteral("a"));
    EXPECT_EQ(m_index.items.keys(), QStringList(QStringLiteral("b")));
}

TEST_F(CoreSpotlightIndexerTest, SaysWhatFailed)
{
    m_index.failure = Error{QStringLiteral("Index"), 1, QStringLiteral("full"), {}};
    EXPECT_EQ(printedBy([&] { m_indexer.publish(paper(QStringLiteral("a"))); }),
              "CoreSpotlightIndexer: Error indexing paper a: full\n");
    EXPECT_EQ(printedBy([&] { m_indexer.publish(QList<Paper>{}); }),
              "CoreSpotlightIndexer: Error performing batch index: full\n");
    EXPECT_EQ(printedBy([&] { m_indexer.publishLibrary({}); }),
              "CoreSpotlightIndexer: Error performing batch index: full\n");
    EXPECT_EQ(printedBy([&] { m_indexer.withdraw(QStringLiteral("a")); }),
              "CoreSpotlightIndexer: Error removing item a: full\n");
}

TEST_F(CoreSpotlightIndexerTest, IsSilentWhenNothingFails)
{
    EXPECT_EQ(printedBy([&] { m_indexer.publish(paper(QStringLiteral("a"))); }), "");
}
} // namespace
