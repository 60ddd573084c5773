#include "store/Paper.h"
#include "support/Printing.h"

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
