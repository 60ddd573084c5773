#include "search/PaperFilter.h"
#include "support/Printing.h"

#include <gtest/gtest.h>

namespace
{
Paper paper(const char *id, const char *title, const char *authors, std::optional<qint64> year,
            const char *path)
{
    Paper paper;
    paper.id = QString::fromUtf8(id);
    paper.title = QString::fromUtf8(title);
    paper.authors = QString::fromUtf8(authors);
    paper.year = year;
    paper.filepath = QString::fromUtf8(path);
    return paper;
}

SearchResult resultOf(const Paper &paper)
{
    SearchResult result;
    result.paperId = paper.id;
    result.title = paper.title;
    result.filepath = paper.filepath;
    return result;
}

const QList<Paper> kPapers{
    paper("1", "Deep Learning", "Ann Smith", 2016, "/smith/goodfellow.pdf"),
    paper("2", "Über Graphen", "B. Ö. Žižek", std::nullopt, "/deep/Graphs v2.PDF"),
    paper("3", "Shallow deepness", "", 2019, "/x/deep.pdf"),
};

QString idsPassing(const char *query)
{
    QString ids;
    for (const Paper &found : filteredPapers(kPapers, ParsedQuery(QString::fromUtf8(query))))
        ids += found.id;
    return ids;
}

QString idsPassing(const char *query, const QList<Paper> &listed, ListedPapers standFor)
{
    QList<SearchResult> results;
    for (const Paper &found : kPapers)
        results.prepend(resultOf(found));
    QString ids;
    for (const SearchResult &found :
         filteredResults(results, ParsedQuery(QString::fromUtf8(query)), listed, standFor))
        ids += found.paperId;
    return ids;
}
} // namespace

TEST(PaperFilter, LeavesTheListAloneWithoutFieldFilters)
{
    EXPECT_EQ(filteredPapers(kPapers, ParsedQuery(QStringLiteral("nothing like it"))), kPapers);
}

TEST(PaperFilter, KeepsThePapersThatContainTheValueWhateverItsCase)
{
    EXPECT_EQ(idsPassing("title:DEEP"), u"13");
    EXPECT_EQ(idsPassing("title:über"), u"2");
    EXPECT_EQ(idsPassing("author:žIŽEK"), u"2");
    EXPECT_EQ(idsPassing("title:nowhere"), QString());
}

TEST(PaperFilter, LooksOnlyAtTheLastComponentOfThePath)
{
    EXPECT_EQ(idsPassing("file:deep"), u"3");
    EXPECT_EQ(idsPassing("file:smith"), QString());
    EXPECT_EQ(idsPassing("file:.pdf"), u"123");
}

TEST(PaperFilter, KeepsOnlyTheExactYear)
{
    EXPECT_EQ(idsPassing("year:2016"), u"1");
    EXPECT_EQ(idsPassing("year:201"), QString());
    EXPECT_EQ(idsPassing("year:0"), QString()) << "no year is not the year 0";
}

TEST(PaperFilter, WantsEveryFilterToPass)
{
    EXPECT_EQ(idsPassing("title:deep year:2019"), u"3");
    EXPECT_EQ(idsPassing("title:deep author:smith year:2019"), QString());
}

TEST(PaperFilter, SharesTheListWhenAllPass)
{
    EXPECT_TRUE(filteredPapers(kPapers, ParsedQuery(QStringLiteral("title:e"))).isSharedWith(kPapers));
}

TEST(PaperFilter, EndsWhenItIsStopped)
{
    std::stop_source stop;
    stop.request_stop();
    const ParsedQuery query(QStringLiteral("title:deep"));
    EXPECT_TRUE(filteredPapers(kPapers, query, stop.get_token()).isEmpty());
}

TEST(ResultFilter, KeepsResultsOutsideTheListedPapersUnlessATagIsSelected)
{
    const QList<Paper> listed{kPapers[0], kPapers[2]};
    EXPECT_EQ(idsPassing("words", listed, ListedPapers::Everything), u"321");
    EXPECT_EQ(idsPassing("words", listed, ListedPapers::OneTag), u"31");
    EXPECT_EQ(idsPassing("words", {}, ListedPapers::OneTag), QString());
}

TEST(ResultFilter, TestsTitleAndFileOfTheResultItself)
{
    EXPECT_EQ(idsPassing("title:deep", {}, ListedPapers::Everything), u"31");
    EXPECT_EQ(idsPassing("file:graphs", {}, ListedPapers::Everything), u"2");
}

TEST(ResultFilter, TestsAuthorAndYearOfTheListedPaper)
{
    EXPECT_EQ(idsPassing("author:smith", kPapers, ListedPapers::Everything), u"1");
    EXPECT_EQ(idsPassing("year:2019", kPapers, ListedPapers::Everything), u"3");
    EXPECT_EQ(idsPassing("author:smith", {kPapers[1]}, ListedPapers::Everything), QString());
    EXPECT_EQ(idsPassing("year:2019", {kPapers[1]}, ListedPapers::Everything), QString());
}
