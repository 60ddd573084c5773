#include "store/Database.h"
#include "support/Printing.h"
#include "support/TemporaryFolder.h"

#include <chrono>
#include <sqlite3.h>

namespace
{
class DatabaseStatements : public ::testing::Test
{
protected:
    Row firstRow(const QString &sql, const SqlValues &parameters = {})
    {
        const auto rows = database.query(sql, parameters);
        EXPECT_TRUE(rows) << rows.error().message().toStdString();
        return rows->first();
    }

    TemporaryFolder folder;
    Database database{folder.path(QStringLiteral("library.db"))};
};

constexpr QLatin1String kValue("v");
} // namespace

TEST_F(DatabaseStatements, BringEveryTypeThereAndBack)
{
    const auto echoed = [this](const SqlValue &value) {
        return firstRow(QStringLiteral("SELECT ? AS v"), {value});
    };
    EXPECT_EQ(echoed(QStringLiteral("naïve 数学 𝔸")).text(kValue), QStringLiteral("naïve 数学 𝔸"));
    EXPECT_EQ(echoed(qint64(-9'007'199'254'740'993)).integer(kValue), -9'007'199'254'740'993);
    EXPECT_EQ(echoed(0.1).real(kValue), 0.1);
    EXPECT_EQ(echoed(QByteArray("\0\xff", 2)).blob(kValue), QByteArray("\0\xff", 2));
    EXPECT_EQ(echoed(QByteArray()).blob(kValue), QByteArray(""));
    EXPECT_EQ(echoed(QString()).text(kValue), QString()) << "an empty text is no NULL";
    EXPECT_FALSE(echoed(SqlValue()).contains(kValue));
}

TEST_F(DatabaseStatements, EndATextAtItsFirstZero)
{
    const QString text = QStringLiteral("ab") + QChar(u'\0') + u"cd";
    EXPECT_EQ(firstRow(QStringLiteral("SELECT ? AS v"), {text}).text(kValue), u"ab");
}

TEST_F(DatabaseStatements, LeaveNullColumnsOutOfTheirRows)
{
    const Row row = firstRow(QStringLiteral("SELECT NULL AS a, 0 AS b"));
    EXPECT_FALSE(row.contains(QLatin1String("a")));
    EXPECT_TRUE(row.contains(QLatin1String("b")));
    EXPECT_FALSE(row.contains(QLatin1String("c")));
}

TEST_F(DatabaseStatements, AnswerAValueOnlyAsWhatItIs)
{
    const Row row = firstRow(QStringLiteral("SELECT '7' AS v"));
    EXPECT_EQ(row.text(kValue), u"7");
    EXPECT_EQ(row.integer(kValue), std::nullopt);
    EXPECT_EQ(row.real(kValue), std::nullopt);
    EXPECT_EQ(row.blob(kValue), std::nullopt);
}

TEST_F(DatabaseStatements, AnswerNoRowsAsAnEmptyList)
{
    const auto rows = database.query(QStringLiteral("SELECT * FROM papers"));
    ASSERT_TRUE(rows);
    EXPECT_TRUE(rows->isEmpty());
}

TEST_F(DatabaseStatements, FailWithTheConnectionsCodeAndMessage)
{
    const auto failed = database.query(QStringLiteral("SELECT * FROM nowhere"));
    ASSERT_FALSE(failed);
    EXPECT_EQ(
        failed.error(),
        (Error{
            QStringLiteral("DatabaseManager"), SQLITE_ERROR, QStringLiteral("no such table: nowhere"), {}}));
}

TEST_F(DatabaseStatements, RefuseToExecuteWhatReturnsARow)
{
    const auto failed = database.execute(QStringLiteral("SELECT 1"));
    ASSERT_FALSE(failed);
    EXPECT_EQ(failed.error().code, SQLITE_ROW);
}

TEST_F(DatabaseStatements, RefuseAParameterThatHasNoPlace)
{
    const auto failed = database.execute(QStringLiteral("DELETE FROM tags WHERE tag = ?"),
                                         {QStringLiteral("a"), QStringLiteral("b")});
    ASSERT_FALSE(failed);
    EXPECT_EQ(failed.error().code, SQLITE_RANGE);
}

TEST_F(DatabaseStatements, RefuseToExecuteNothing)
{
    const auto failed = database.execute(QStringLiteral("  -- nothing"));
    ASSERT_FALSE(failed);
    EXPECT_EQ(failed.error().code, SQLITE_MISUSE);
}

TEST_F(DatabaseStatements, KeepTheRowsReadBeforeAFailure)
{
    const auto rows = database.query(
        QStringLiteral("SELECT abs(column1) AS v FROM (VALUES (1), (-2), (-9223372036854775807 - 1), (4))"));
    ASSERT_TRUE(rows);
    ASSERT_EQ(rows->size(), 2);
    EXPECT_EQ(rows->at(1).integer(kValue), 2);
}

TEST_F(DatabaseStatements, FailWhenTheFirstRowCannotBeRead)
{
    const auto failed = database.query(QStringLiteral("SELECT abs(-9223372036854775807 - 1)"));
    ASSERT_FALSE(failed);
    EXPECT_EQ(failed.error().description, u"integer overflow");
}

TEST_F(DatabaseStatements, InsertChunksAsFullTextRows)
{
    const QList<Chunk> chunks{{.text = "graph neural networks", .pageNum = 3, .index = 0},
                              {.text = "über graphs", .pageNum = 4, .index = 1}};
    ASSERT_TRUE(database.insertChunks(QStringLiteral("a"), chunks));
    const auto rows = database.query(
        QStringLiteral("SELECT paper_id, page_num, content FROM fts_papers WHERE fts_papers MATCH 'uber'"));
    ASSERT_EQ(rows->size(), 1);
    EXPECT_EQ(rows->first().text(QLatin1String("paper_id")), u"a");
    EXPECT_EQ(rows->first().integer(QLatin1String("page_num")), 4);
    EXPECT_EQ(rows->first().text(QLatin1String("content")), QStringLiteral("über graphs"));
}

TEST_F(DatabaseStatements, InsertChunksOfTextThatIsPartOfALargerBuffer)
{
    const QByteArray page("alpha beta");
    ASSERT_TRUE(
        database.insertChunks(QStringLiteral("a"), {{.text = QByteArray::fromRawData(page.constData(), 5)}}));
    const Row row = firstRow(QStringLiteral("SELECT content AS v FROM fts_papers"));
    EXPECT_EQ(row.text(kValue), u"alpha");
}

TEST_F(DatabaseStatements, FailToInsertChunksWithoutATable)
{
    ASSERT_TRUE(database.execute(QStringLiteral("DROP TABLE fts_papers")));
    const auto failed = database.insertChunks(QStringLiteral("a"), {{.text = "b"}});
    ASSERT_FALSE(failed);
    EXPECT_EQ(failed.error().description, u"no such table: fts_papers");
}

TEST_F(DatabaseStatements, AreUndoneWhenATransactionFails)
{
    const Result<void> failed = inTransaction(database, [this]() -> Result<void> {
        if (auto done = database.execute(QStringLiteral("INSERT INTO tag_definitions VALUES ('x')")); !done)
            return done;
        return database.execute(QStringLiteral("INSERT INTO nowhere VALUES (1)"));
    });
    ASSERT_FALSE(failed);
    EXPECT_EQ(failed.error().description, u"no such table: nowhere");
    EXPECT_TRUE(database.query(QStringLiteral("SELECT * FROM tag_definitions"))->isEmpty());
    EXPECT_TRUE(database.execute(QStringLiteral("BEGIN TRANSACTION"))) << "no transaction is left open";
}

TEST_F(DatabaseStatements, ThatExceedTheirTimeAreEndedAndNoOthers)
{
    using namespace std::chrono_literals;
    const QString endless = QStringLiteral("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n) "
                                           "SELECT count(*) AS v FROM n");
    const auto ended = database.queryWithin(0ms, endless);
    ASSERT_FALSE(ended);
    EXPECT_EQ(ended.error().code, SQLITE_INTERRUPT);
    EXPECT_EQ(ended.error().description, u"interrupted");

    const QString counted =
        QStringLiteral("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < ?) "
                       "SELECT count(*) AS v FROM n");
    EXPECT_EQ(firstRow(counted, {qint64(10'000)}).integer(kValue), 10'000) << "the limit went with its query";
    const auto within = database.queryWithin(24h, counted, {qint64(10'000)});
    ASSERT_TRUE(within);
    EXPECT_EQ(within->first().integer(kValue), 10'000);
}
