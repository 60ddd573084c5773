#include "store/DatabaseManager.h"
#include "support/Gate.h"
#include "support/Printing.h"
#include "support/TemporaryFolder.h"

#include <QFile>
#include <QThread>
#include <sys/wait.h>
#include <unistd.h>

namespace
{
const QString kName = QStringLiteral("library.db");

/// An operation that notes its name.
auto noting(QStringList &notes, const QString &name)
{
    return [&notes, name](Database &) {
        notes.append(name);
        return Result<void>();
    };
}

bool writePaper(DatabaseManager &db, const QString &id)
{
    const auto write = [id](Database &database) {
        return inTransaction(database, [&]() -> Result<void> {
            auto done =
                database.execute(QStringLiteral("INSERT INTO papers (id, title) VALUES (?, ?)"), {id, id});
            if (done)
                done = database.insertChunks(id, {{.text = "some words"}, {.text = "and some more"}});
            return done ? database.replaceTags(id, {QStringLiteral("Tag")}) : done;
        });
    };
    return db.perform(Urgency::Background, write).result().has_value();
}

bool writePapers(const QString &path, const QString &name, int count)
{
    DatabaseManager db(path);
    bool isWritten = true;
    for (int i = 0; i < count; ++i)
        isWritten = writePaper(db, QStringLiteral("%1-%2").arg(name).arg(i)) && isWritten;
    return isWritten;
}

/// Runs `work` in a process of its own; answers its id.
template <typename Work> pid_t inAnotherProcess(Work work)
{
    const pid_t child = fork();
    if (child == 0)
        _exit(work() ? 0 : 1);
    return child;
}

bool succeeded(pid_t child)
{
    int status = -1;
    return waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}
} // namespace

TEST(DatabaseManager, RunsOperationsOnOneThreadThatIsNotTheCallers)
{
    const TemporaryFolder folder;
    DatabaseManager db(folder.path(kName));
    const auto thread = [](Database &) {
        return Result<Qt::HANDLE>(QThread::currentThreadId());
    };
    const Result<Qt::HANDLE> first = db.perform(Urgency::Background, thread).result();
    const Result<Qt::HANDLE> second = db.perform(Urgency::PersonWaits, thread).result();
    EXPECT_EQ(*first, *second);
    EXPECT_NE(*first, QThread::currentThreadId());
}

TEST(DatabaseManager, OpensTheFileForTheFirstOperation)
{
    const TemporaryFolder folder;
    const QString path = folder.path(kName);
    {
        DatabaseManager unused(path);
    }
    EXPECT_FALSE(QFile::exists(path));
    DatabaseManager db(path);
    EXPECT_TRUE(db.query(QStringLiteral("SELECT 1")).result());
    EXPECT_TRUE(QFile::exists(path));
}

TEST(DatabaseManager, LetsWhatAPersonWaitsForOvertakeWhatIsQueuedButNotWhatRuns)
{
    const TemporaryFolder folder;
    QStringList notes;
    {
        DatabaseManager db(folder.path(kName));
        Gate gate(db);
        db.perform(Urgency::Background, noting(notes, QStringLiteral("background 1")));
        db.perform(Urgency::Background, noting(notes, QStringLiteral("background 2")));
        db.perform(Urgency::PersonWaits, noting(notes, QStringLiteral("person 1")));
        db.perform(Urgency::PersonWaits, noting(notes, QStringLiteral("person 2")));
        EXPECT_EQ(notes, QStringList()) << "the running operation is never interrupted";
        gate.open();
    }
    EXPECT_EQ(notes, (QStringList{QStringLiteral("person 1"), QStringLiteral("person 2"),
                                  QStringLiteral("background 1"), QStringLiteral("background 2")}));
}

TEST(DatabaseManager, FinishesEveryAcceptedOperationBeforeItGoes)
{
    const TemporaryFolder folder;
    QList<QFuture<Result<void>>> answers;
    {
        DatabaseManager db(folder.path(kName));
        for (int i = 0; i < 200; ++i) {
            answers.append(
                db.perform(i % 2 ? Urgency::PersonWaits : Urgency::Background, [i](Database &database) {
                    return database.execute(QStringLiteral("INSERT INTO tag_definitions VALUES (?)"),
                                            {QString::number(i)});
                }));
        }
    }
    for (const auto &answer : answers) {
        EXPECT_TRUE(answer.isFinished());
        EXPECT_TRUE(answer.result());
    }
    DatabaseManager again(folder.path(kName));
    EXPECT_EQ(again.query(QStringLiteral("SELECT name FROM tag_definitions")).result()->size(), 200);
}

TEST(DatabaseManager, AcceptsOperationsFromManyThreadsAtOnce)
{
    const TemporaryFolder folder;
    DatabaseManager db(folder.path(kName));
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([&db, t] {
            for (int i = 0; i < 50; ++i)
                EXPECT_TRUE(writePaper(db, QStringLiteral("%1-%2").arg(t).arg(i)));
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_EQ(db.query(QStringLiteral("SELECT id FROM papers")).result()->size(), 200);
}

TEST(DatabaseManager, PassesTheHelpersOn)
{
    const TemporaryFolder folder;
    DatabaseManager db(folder.path(kName));
    EXPECT_EQ(db.dbPath(), folder.path(kName));
    ASSERT_TRUE(db.execute(QStringLiteral("INSERT INTO papers (id) VALUES ('a')")).result());
    ASSERT_TRUE(db.insertChunks(QStringLiteral("a"), {{.text = "words"}}).result());
    ASSERT_TRUE(db.replaceTags(QStringLiteral("a"), {QStringLiteral("x")}).result());
    ASSERT_TRUE(db.renameTag(QStringLiteral("x"), QStringLiteral("y")).result());
    EXPECT_EQ(db.query(QStringLiteral("SELECT tag FROM tags")).result()->first().text(QLatin1String("tag")),
              u"y");
    ASSERT_TRUE(db.deleteTag(QStringLiteral("y")).result());
    EXPECT_TRUE(db.query(QStringLiteral("SELECT tag FROM tags")).result()->isEmpty());
    EXPECT_TRUE(db.verifyUsable().result());
}

TEST(DatabaseManager, SharesItsFileWithOtherProcessesThatWriteAtTheSameTime)
{
    const TemporaryFolder folder;
    const QString path = folder.path(kName);
    // All three meet a file that does not exist yet, so they also race through its creation.
    const pid_t first = inAnotherProcess([&] { return writePapers(path, QStringLiteral("first"), 100); });
    const pid_t second = inAnotherProcess([&] { return writePapers(path, QStringLiteral("second"), 100); });
    EXPECT_TRUE(writePapers(path, QStringLiteral("third"), 100));
    EXPECT_TRUE(succeeded(first));
    EXPECT_TRUE(succeeded(second));

    DatabaseManager db(path);
    EXPECT_EQ(db.query(QStringLiteral("SELECT id FROM papers")).result()->size(), 300);
    EXPECT_EQ(db.query(QStringLiteral("SELECT tag FROM tags")).result()->size(), 300);
    EXPECT_EQ(db.query(QStringLiteral("SELECT rowid FROM fts_papers WHERE fts_papers MATCH 'some'"))
                  .result()
                  ->size(),
              600);
    const auto check = db.query(QStringLiteral("PRAGMA integrity_check")).result();
    EXPECT_EQ(check->first().text(QLatin1String("integrity_check")), u"ok");
    const auto version = db.query(QStringLiteral("PRAGMA user_version")).result();
    EXPECT_EQ(version->first().integer(QLatin1String("user_version")), Database::kSchemaVersion);
}
