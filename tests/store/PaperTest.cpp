#include "store/Paper.h"
#include "store/PaperRow.h"
#include "support/Printing.h"

#include <QMap>
#include <QSet>
#include <gtest/gtest.h>

namespace
{
Paper paper()
{
    return {.id = QStringLiteral("a"),
            .title = QStringLiteral("T"),
            .authors = QStringLiteral("A"),
            .year = 2019,
            .pageCount = 12,
            .coverPath = QStringLiteral("/c.jpg"),
            .filepath = QStringLiteral("/p.pdf"),
            .tags = {QStringLiteral("x"), QStringLiteral("y")}};
}

/// A row of `papers` in which every column can be replaced.
Row paperRow(const QMap<QString, SqlValue> &replaced = {})
{
    QMap<QString, SqlValue> values{
        {QStringLiteral("id"), QStringLiteral("a")},
        {QStringLiteral("title"), QStringLiteral("T")},
        {QStringLiteral("authors"), QStringLiteral("A")},
        {QStringLiteral("year"), qint64(2019)},
        {QStringLiteral("filepath"), QStringLiteral("/p.pdf")},
        {QStringLiteral("cover_path"), QStringLiteral("/c.jpg")},
        {QStringLiteral("page_count"), qint64(12)},
    };
    values.insert(replaced);
    return Row(std::make_shared<QStringList>(values.keys()), {values.begin(), values.end()});
}
} // namespace

TEST(Paper, IsEqualOnlyWhenEveryFieldIs)
{
    EXPECT_EQ(paper(), paper());
    Paper other = paper();
    other.year = std::nullopt;
    EXPECT_NE(other, paper());
    other = paper();
    other.coverPath.clear();
    EXPECT_NE(other, paper());
}

TEST(Paper, DiffersWhenOnlyTheOrderOfItsTagsDoes)
{
    Paper other = paper();
    std::swap(other.tags[0], other.tags[1]);
    EXPECT_NE(other, paper());
    EXPECT_NE(qHash(other), qHash(paper()));
}

TEST(Paper, HashesEquallyWhenEqual)
{
    EXPECT_EQ(qHash(paper(), 7), qHash(paper(), 7));
    EXPECT_EQ((QSet<Paper>{paper(), paper()}).size(), 1);
}

TEST(Paper, HashesAYearOfZeroUnlikeNoYear)
{
    Paper zero = paper();
    zero.year = 0;
    Paper none = paper();
    none.year = std::nullopt;
    EXPECT_NE(qHash(zero), qHash(none));
}

TEST(PaperRow, BecomesAPaperWithoutTags)
{
    Paper untagged = paper();
    untagged.tags.clear();
    EXPECT_EQ(paperFromRow(paperRow()), untagged);
}

TEST(PaperRow, YieldsNoPaperWithoutIdTitleOrPath)
{
    for (const char *column : {"id", "title", "filepath"}) {
        EXPECT_EQ(paperFromRow(paperRow({{QLatin1String(column), SqlValue()}})), std::nullopt) << column;
        EXPECT_EQ(paperFromRow(paperRow({{QLatin1String(column), qint64(7)}})), std::nullopt) << column;
    }
}

TEST(PaperRow, TakesDefaultsForWhatIsMissing)
{
    const auto found = paperFromRow(paperRow({{QStringLiteral("authors"), SqlValue()},
                                              {QStringLiteral("year"), SqlValue()},
                                              {QStringLiteral("page_count"), SqlValue()},
                                              {QStringLiteral("cover_path"), SqlValue()}}));
    ASSERT_TRUE(found);
    EXPECT_EQ(found->authors, QString());
    EXPECT_EQ(found->year, std::nullopt);
    EXPECT_EQ(found->pageCount, 0);
    EXPECT_EQ(found->coverPath, QString());
    EXPECT_EQ(found->tags, QStringList());
}

TEST(PaperRow, TakesDefaultsForValuesOfOtherTypes)
{
    const auto found = paperFromRow(paperRow({{QStringLiteral("authors"), qint64(1)},
                                              {QStringLiteral("year"), QStringLiteral("2019")},
                                              {QStringLiteral("page_count"), 1.5}}));
    ASSERT_TRUE(found);
    EXPECT_EQ(found->authors, QString());
    EXPECT_EQ(found->year, std::nullopt);
    EXPECT_EQ(found->pageCount, 0);
}

TEST(PaperRow, KeepsAYearOfZero)
{
    EXPECT_EQ(paperFromRow(paperRow({{QStringLiteral("year"), qint64(0)}}))->year, 0);
}
