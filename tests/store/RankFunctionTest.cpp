#include "store/RankFunction.h"

#include "store/Database.h"
#include "store/RankedLibrary.h"
#include "support/Printing.h"
#include "support/RawDatabase.h"

#include <sys/wait.h>
#include <unistd.h>

namespace
{
using namespace std::chrono_literals;

class RankFunction : public ::testing::Test
{
protected:
    /// `count` random expressions; most of them must match something, or the comparison would be idle.
    void expectSameScores(int count)
    {
        int matches = 0;
        for (int i = 0; i < count; ++i)
            matches += library.expectSameScores(text.expression());
        EXPECT_GT(matches, 0);
    }

    void addPapers(int count)
    {
        library.run("BEGIN");
        for (; count > 0; --count)
            library.run(RankedLibrary::paper(papers++, text));
        library.run("COMMIT");
    }

    QByteArray randomWrite()
    {
        const int paper = text.below(papers);
        switch (text.below(3)) {
        case 0:
            return RankedLibrary::paper(papers++, text);
        case 1:
            return RankedLibrary::removal(paper);
        default:
            return RankedLibrary::removal(paper) + RankedLibrary::paper(paper, text);
        }
    }

    RankedLibrary library;
    RandomText text{1};
    int papers = 0;
};

/// What another process does: it opens the file, runs `sql` and goes.
void runInAnotherProcess(const QString &path, const QByteArray &sql)
{
    const pid_t child = fork();
    if (child == 0) {
        sqlite3 *connection = nullptr;
        const bool isDone = sqlite3_open(QFile::encodeName(path).constData(), &connection) == SQLITE_OK &&
                            sqlite3_exec(connection, sql.constData(), nullptr, nullptr, nullptr) == SQLITE_OK;
        sqlite3_close(connection);
        _exit(isDone ? 0 : 1);
    }
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_EQ(status, 0);
}
} // namespace

TEST_F(RankFunction, ScoresEveryRowAsTheBuiltInFunctionDoes)
{
    addPapers(150);
    expectSameScores(400);
}

TEST_F(RankFunction, TakesColumnWeightsAsTheBuiltInFunctionDoes)
{
    addPapers(50);
    for (const char *weights : {", 1.0, 1.0, 2.5", ", 3", ", 1.0, 1.0, 0.3, 9.0"})
        EXPECT_GT(library.expectSameScores("the OR matrix", weights), 0);
}

TEST_F(RankFunction, ScoresAlikeWhileLengthsAreReadSliceBySlice)
{
    addPapers(200);
    expectSameScores(1);
    while (library.lengths->wantsSlice()) {
        library.lengths->readSlice(7);
        library.run(randomWrite());
        library.expectSameScores("zeta AND omega");
        library.expectSameScores(text.expression());
    }
    expectSameScores(50);
}

TEST_F(RankFunction, ScoresAlikeThroughInsertsReindexingAndRemovals)
{
    addPapers(60);
    for (int round = 0; round < 150; ++round) {
        library.run(randomWrite());
        expectSameScores(4);
    }
}

TEST_F(RankFunction, ScoresAlikeInsideTransactionsAndAfterRollbacks)
{
    addPapers(60);
    for (int round = 0; round < 100; ++round) {
        library.run("BEGIN");
        library.run(randomWrite());
        expectSameScores(3);
        library.run("SAVEPOINT here");
        library.run(randomWrite());
        expectSameScores(3);
        library.run(text.below(2) ? "ROLLBACK TO here" : "RELEASE here");
        expectSameScores(3);
        library.run(text.below(2) ? "ROLLBACK" : "COMMIT");
        expectSameScores(3);
    }
}

TEST_F(RankFunction, ForgetsARowIdsLengthWhenARollbackGivesItAnotherPage)
{
    addPapers(20);
    library.run(RankedLibrary::insertion(900, 1, "lonely page"));
    library.expectSameScores("the OR lonely");
    library.run("BEGIN");
    library.run(RankedLibrary::removal(900) +
                RankedLibrary::insertion(901, 1, "lonely page with more words"));
    EXPECT_EQ(library.expectSameScores("lonely"), 1);
    library.run("ROLLBACK");
    EXPECT_EQ(library.expectSameScores("lonely"), 1);
}

TEST_F(RankFunction, NoticesWhatAnotherConnectionWrites)
{
    addPapers(60);
    RawDatabase other(library.path());
    for (int round = 0; round < 60; ++round) {
        other.run(randomWrite().constData());
        if (text.below(3) == 0)
            library.run(randomWrite());
        if (library.lengths->wantsSlice())
            library.lengths->readSlice(20);
        expectSameScores(4);
    }
}

TEST_F(RankFunction, NoticesWhatAnotherProcessWrites)
{
    addPapers(60);
    for (int round = 0; round < 10; ++round) {
        expectSameScores(4);
        runInAnotherProcess(library.path(), randomWrite());
        expectSameScores(4);
    }
}

TEST_F(RankFunction, ScoresAlikeAfterTheIndexIsRebuiltOrMadeAnew)
{
    addPapers(40);
    expectSameScores(20);
    library.run("INSERT INTO fts_papers (fts_papers) VALUES ('rebuild')");
    expectSameScores(20);
    library.run("DROP TABLE fts_papers");
    library.run("CREATE VIRTUAL TABLE fts_papers USING fts5(paper_id UNINDEXED, page_num UNINDEXED, content, "
                "tokenize='unicode61')");
    addPapers(30);
    expectSameScores(20);
}

TEST_F(RankFunction, ScoresPagesOfAnyLengthAndRowsOfAnyIdAlike)
{
    addPapers(20);
    library.run("INSERT INTO fts_papers (rowid, paper_id, page_num, content) VALUES "
                "(-5, 'n', 1, 'the negative'), (9000000000000000000, 'm', 1, 'the last'), (0, 'z', 1, 'the "
                "zero')");
    library.run(RankedLibrary::insertion(1, 1, "the short"));
    library.run(RankedLibrary::insertion(1, 2, QByteArray("the long ").repeated(40'000)));
    for (int i = 0; i < 3; ++i)
        EXPECT_GE(library.expectSameScores("the"), 5);
}

TEST_F(RankFunction, LeavesDamagedLengthRecordsToTheTable)
{
    addPapers(30);
    expectSameScores(20);
    library.run("UPDATE fts_papers_docsize SET sz = x'0000' WHERE id = 3");
    EXPECT_FALSE(library.lengths->find(3).has_value()) << "forgotten by the update";
    RawDatabase(library.path()).run("CREATE TABLE other (n)"); // so that all is read again
    library.expectSameScores("zeta NOT the");
    while (library.lengths->wantsSlice())
        library.lengths->readSlice();
    EXPECT_FALSE(library.lengths->find(3).has_value());
    EXPECT_TRUE(library.lengths->find(4).has_value());
}

TEST(RankedDatabase, RanksAsAPlainConnectionDoes)
{
    TemporaryFolder folder;
    const QString path = folder.path(QStringLiteral("library.db"));
    Database database(path);
    RandomText text(2);
    for (int page = 0; page < 300; ++page) {
        const Chunk chunk{.text = text.page(), .pageNum = page, .index = 0};
        ASSERT_TRUE(database.insertChunks(QStringLiteral("p"), {chunk}));
    }
    RawDatabase plain(path);
    for (int i = 0; i < 60; ++i) {
        const QByteArray expression = text.expression();
        const QByteArray select = "SELECT rowid || format(': %!.17g', bm25(fts_papers)) AS score FROM "
                                  "fts_papers WHERE fts_papers MATCH ";
        const QByteArray order = " ORDER BY bm25(fts_papers) LIMIT 50";
        const QByteArray sql = select + '\'' + expression + '\'' + order;
        const auto rows = database.queryRanked(1min, QString::fromUtf8(select + '?' + order),
                                               QString::fromUtf8(expression));
        ASSERT_TRUE(rows);
        QStringList own;
        for (const Row &row : *rows)
            own.append(row.text(QLatin1String("score")).value_or(QString()));
        EXPECT_EQ(own, plain.texts(sql.constData())) << sql.constData();
        if (database.hasIdleWork())
            database.doIdleWork();
    }
    EXPECT_FALSE(database.hasIdleWork());
}

TEST(RankedDatabase, EndsASearchThatExceedsItsTime)
{
    TemporaryFolder folder;
    Database database(folder.path(QStringLiteral("library.db")));
    const QList<Chunk> pages(500, Chunk{.text = "transform transport", .pageNum = 1, .index = 0});
    ASSERT_TRUE(database.insertChunks(QStringLiteral("p"), pages));
    const auto sql =
        QStringLiteral("SELECT bm25(fts_papers) AS score FROM fts_papers WHERE fts_papers MATCH ?");
    const auto ended = database.queryRanked(0ms, sql, QStringLiteral("trans*"));
    ASSERT_FALSE(ended);
    EXPECT_EQ(ended.error().description, u"interrupted");
    const auto rows = database.queryRanked(24h, sql, QStringLiteral("trans*"));
    ASSERT_TRUE(rows);
    EXPECT_EQ(rows->size(), 500);
}
