// Files that cannot be used, and what is said about them.
#include "store/Database.h"
#include "store/DatabaseManager.h"
#include "support/Printing.h"
#include "support/RawDatabase.h"
#include "support/TemporaryFolder.h"

#include <QDir>
#include <chrono>

using namespace std::chrono_literals;

namespace
{
const QString kName = QStringLiteral("library.db");

Error failureOf(const Result<void> &result)
{
    EXPECT_FALSE(result);
    return result ? Error() : result.error();
}
} // namespace

TEST(DatabaseFailure, NamesAFileThatCannotBeOpened)
{
    const TemporaryFolder folder;
    const QString path = folder.path(kName);
    ASSERT_TRUE(QDir().mkpath(path));
    ::testing::internal::CaptureStdout();
    Database database(path);
    EXPECT_EQ(::testing::internal::GetCapturedStdout(),
              "DatabaseManager: Error opening database: unable to open database file\n");

    const Error error = failureOf(database.execute(QStringLiteral("DELETE FROM papers")));
    EXPECT_EQ(error.domain, u"DatabaseManager");
    EXPECT_EQ(error.code, -1);
    EXPECT_EQ(error.description, u"The library database could not be opened.");
    EXPECT_TRUE(error.reason.contains(path));
    EXPECT_EQ(database.query(QStringLiteral("SELECT 1")).error(), error);
    EXPECT_EQ(database.queryWithin(1s, QStringLiteral("SELECT 1")).error(), error);
    EXPECT_EQ(database.queryRanked(1s, QStringLiteral("SELECT 1"), QStringLiteral("a*")).error(), error);
    EXPECT_EQ(failureOf(database.insertChunks(QStringLiteral("a"), {{}})), error);
    EXPECT_EQ(failureOf(database.replaceTags(QStringLiteral("a"), {})), error);
    EXPECT_EQ(failureOf(database.renameTag(QStringLiteral("a"), QStringLiteral("b"))), error);
    EXPECT_EQ(failureOf(database.deleteTag(QStringLiteral("a"))), error);
    EXPECT_EQ(failureOf(database.verifyUsable()), error);
}

TEST(DatabaseFailure, ReportsAFolderThatCannotBeMadeOnlyWhenTheFileIsOpened)
{
    const TemporaryFolder folder;
    const QString path = folder.write(QStringLiteral("file"), "in the way") + u"/Quirevault/" + kName;
    ::testing::internal::CaptureStdout();
    {
        DatabaseManager db(path);
        EXPECT_EQ(failureOf(db.verifyUsable().result()).code, -1);
    }
    EXPECT_EQ(::testing::internal::GetCapturedStdout(),
              "DatabaseManager: Error opening database: unable to open database file\n");
}

TEST(DatabaseFailure, LeavesAFileThatIsNoDatabaseAsItIs)
{
    const TemporaryFolder folder;
    const QByteArray content = QByteArray("These are my notes.\n").repeated(500);
    const QString path = folder.write(kName, content);
    {
        Database database(path);
        const Error error = failureOf(database.verifyUsable());
        EXPECT_EQ(error.code, SQLITE_NOTADB);
        EXPECT_EQ(error.description, u"file is not a database");
        EXPECT_TRUE(error.reason.contains(path));
        EXPECT_FALSE(database.execute(QStringLiteral("DELETE FROM papers")));
    }
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), content);
}

TEST(DatabaseFailure, RefusesAFileOfANewerVersion)
{
    const TemporaryFolder folder;
    ASSERT_TRUE(QDir().mkpath(folder.path(QStringLiteral("50%2 of %1, %3"))));
    const QString path = folder.path(QStringLiteral("50%2 of %1, %3/library.db"));
    RawDatabase(path).run("PRAGMA user_version = 10");
    Database database(path);
    const Error error = failureOf(database.verifyUsable());
    EXPECT_EQ(error.domain, u"DatabaseManager");
    EXPECT_EQ(error.code, Database::kNewerVersion);
    EXPECT_EQ(error.reason, QString(path + u" has version 10, known is 9"));
}

TEST(DatabaseFailure, FindsNothingWrongWithANewLibrary)
{
    const TemporaryFolder folder;
    Database database(folder.path(kName));
    EXPECT_TRUE(database.verifyUsable());
}

TEST(DatabaseFailure, MakesTheFolderOfTheLibrary)
{
    const TemporaryFolder folder;
    DatabaseManager db(folder.path(QStringLiteral("a/b/Quirevault/library.db")));
    EXPECT_TRUE(db.verifyUsable().result());
    EXPECT_TRUE(QFile::exists(folder.path(QStringLiteral("a/b/Quirevault/library.db"))));
}

TEST(DatabaseFailure, NamesTheFileThatAnotherProgramHasLocked)
{
    const TemporaryFolder folder;
    const QString path = folder.path(kName);
    RawDatabase other(path);
    other.run(
        "CREATE TABLE papers (id TEXT PRIMARY KEY, title TEXT); PRAGMA user_version = 8; BEGIN EXCLUSIVE");

    Database database(path, 20ms);
    const Error error = failureOf(database.verifyUsable());
    EXPECT_EQ(error.code, SQLITE_BUSY);
    EXPECT_EQ(error.description, u"database is locked");
    EXPECT_TRUE(error.reason.contains(path));
}

TEST(DatabaseFailure, MakesUpForAStartThatALockSpoiled)
{
    const TemporaryFolder folder;
    const QString path = folder.path(kName);
    RawDatabase other(path);
    other.run(
        "CREATE TABLE papers (id TEXT PRIMARY KEY, title TEXT); PRAGMA user_version = 8; BEGIN EXCLUSIVE");
    Database database(path, 20ms);
    other.run("COMMIT");

    EXPECT_EQ(other.text("PRAGMA user_version"), u"8") << "no version without its schema";
    EXPECT_TRUE(database.verifyUsable());
    EXPECT_EQ(other.text("PRAGMA user_version"), u"9");
    EXPECT_TRUE(
        other.texts("SELECT name FROM pragma_table_info('papers')").contains(QStringLiteral("content_hash")));
    const auto timeout = database.query(QStringLiteral("PRAGMA busy_timeout"));
    EXPECT_EQ(timeout->first().integer(QLatin1String("timeout")), 20);
}

TEST(DatabaseFailure, SaysWhenTheDiskIsFullAndKeepsWhatWasThere)
{
    const TemporaryFolder folder;
    Database database(folder.path(kName));
    const auto addPaper = [&database](const QString &id, qsizetype size) {
        return inTransaction(database, [&]() -> Result<void> {
            auto done =
                database.execute(QStringLiteral("INSERT INTO papers (id, title) VALUES (?, ?)"), {id, id});
            return done ? database.insertChunks(id,
                                                {{.text = "word " + QByteArray(size, 'x')}, {.text = "more"}})
                        : done;
        });
    };
    ASSERT_TRUE(addPaper(QStringLiteral("small"), 10));
    const qint64 pages =
        *database.query(QStringLiteral("PRAGMA page_count"))->first().integer(QLatin1String("page_count"));
    ASSERT_TRUE(database.query(QStringLiteral("PRAGMA max_page_count = %1").arg(pages + 3)));

    const Error error = failureOf(addPaper(QStringLiteral("large"), 1'000'000));
    EXPECT_EQ(error.code, SQLITE_FULL);
    EXPECT_EQ(error.description, u"database or disk is full");
    const auto papers = database.query(QStringLiteral("SELECT id FROM papers"));
    ASSERT_EQ(papers->size(), 1);
    EXPECT_EQ(papers->first().text(QLatin1String("id")), u"small");
    EXPECT_EQ(database.query(QStringLiteral("SELECT 1 FROM fts_papers"))->size(), 2);
    const auto check = database.query(QStringLiteral("PRAGMA integrity_check"));
    EXPECT_EQ(check->first().text(QLatin1String("integrity_check")), u"ok");

    ASSERT_TRUE(database.query(QStringLiteral("PRAGMA max_page_count = 100000")));
    EXPECT_TRUE(addPaper(QStringLiteral("large"), 1'000'000)) << "and goes on once there is room";
}
