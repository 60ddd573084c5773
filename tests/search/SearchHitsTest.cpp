#include "search/SearchHits.h"
#include "support/Printing.h"

#include <gtest/gtest.h>

namespace
{
Row hit(const SqlValue &paperId, const SqlValue &page, const SqlValue &snippet, const SqlValue &rank)
{
    static const auto columns =
        std::make_shared<QStringList>(QStringList{QStringLiteral("paper_id"), QStringLiteral("page_num"),
                                                  QStringLiteral("snippet"), QStringLiteral("rank")});
    return Row(columns, {paperId, page, snippet, rank});
}

Row hit(const char *paperId, qint64 page, const char *snippet, double rank)
{
    return hit(QString::fromUtf8(paperId), page, QString::fromUtf8(snippet), rank);
}

QHash<QString, Paper> papers(const QStringList &ids)
{
    QHash<QString, Paper> papers;
    for (const QString &id : ids) {
        Paper paper;
        paper.id = id;
        paper.title = u"Title " + id;
        paper.filepath = u"/" + id + u".pdf";
        paper.coverPath = u"/" + id + u".jpg";
        papers.insert(id, paper);
    }
    return papers;
}

const QStringList kAB{QStringLiteral("a"), QStringLiteral("b")};
} // namespace

TEST(SearchHits, BecomeOneResultAPaperWithItsPassagesInTheirOrder)
{
    const QList<SearchResult> results = groupedByPaper(
        {{hit("a", 7, "x", -7.5), hit("b", 1, "y", -5.0), hit("a", 3, "z", -2.0)}, papers(kAB)});
    ASSERT_EQ(results.size(), 2);
    EXPECT_EQ(results[0], (SearchResult{.paperId = QStringLiteral("a"),
                                        .title = QStringLiteral("Title a"),
                                        .filepath = QStringLiteral("/a.pdf"),
                                        .coverPath = QStringLiteral("/a.jpg"),
                                        .passages = {{QStringLiteral("x"), 7}, {QStringLiteral("z"), 3}},
                                        .score = 1.075}));
    EXPECT_EQ(results[1].paperId, u"b");
    EXPECT_DOUBLE_EQ(results[1].score, 1.05);
}

TEST(SearchHits, TakeTheLargestScoreOfTheirPaper)
{
    const auto results = groupedByPaper(
        {{hit("a", 1, "x", -1.0), hit("b", 1, "x", -2.0), hit("a", 2, "x", -3.0)}, papers(kAB)});
    EXPECT_EQ(results[0].paperId, u"a");
    EXPECT_DOUBLE_EQ(results[0].score, 1.03);
}

TEST(SearchHits, WithTheSamePageAndTextCountOnceScoreIncluded)
{
    const auto results = groupedByPaper(
        {{hit("a", 1, "x", -1.0), hit("a", 1, "x", -9.0), hit("a", 1, "y", -2.0), hit("a", 2, "x", -1.0)},
         papers(kAB)});
    ASSERT_EQ(results.size(), 1);
    EXPECT_EQ(results[0].passages.size(), 3);
    EXPECT_DOUBLE_EQ(results[0].score, 1.02);
}

TEST(SearchHits, OfPapersThatAreGoneAreDropped)
{
    const auto results = groupedByPaper({{hit("gone", 1, "x", -9.0), hit("a", 1, "x", -1.0)}, papers(kAB)});
    ASSERT_EQ(results.size(), 1);
    EXPECT_EQ(results[0].paperId, u"a");
}

TEST(SearchHits, TakeDefaultsForWhatIsMissingOrOfAnotherType)
{
    const SqlValue null;
    const QString a = QStringLiteral("a");
    const auto results =
        groupedByPaper({{hit(null, qint64(1), null, null), hit(qint64(7), qint64(1), null, null),
                         hit(a, QStringLiteral("3"), qint64(5), qint64(-9))},
                        papers(kAB)});
    ASSERT_EQ(results.size(), 1);
    EXPECT_EQ(results[0].passages, (QList<Passage>{{QString(), 1}}));
    EXPECT_EQ(results[0].score, 1.0);
}

TEST(SearchHits, AreNoResultsWhenThereAreNone)
{
    EXPECT_TRUE(groupedByPaper({}).isEmpty());
}
