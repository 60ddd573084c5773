// A library that cannot be written, opened or understood: the reason is told, and nothing of it is lost.
#include "program/LibraryFixture.h"
#include "support/LoseRightsOfRoot.h"
#include "support/RawDatabase.h"

#include <sqlite3.h>
#include <sys/resource.h>
#include <sys/stat.h>

class BadLibrary : public LibraryFixture
{
protected:
    void SetUp() override { paper(QStringLiteral("good.pdf"), {QStringLiteral("The good one")}, "Good"); }
};

TEST_F(BadLibrary, SaysThatThereIsNoSpaceLeftAndKeepsTheLibraryWhole)
{
    ASSERT_EQ(importAll().status, 0);
    PdfBuilder big;
    big.title("Big");
    for (int page = 0; page < 100; ++page) {
        QStringList lines;
        for (int line = 0; line < 40; ++line)
            lines.append(
                QStringLiteral("words %1 that fill the index %2").arg(page * 7919).arg(line * 104729));
        big.page(lines);
    }
    m_papers.write(QStringLiteral("big.pdf"), big.build());
    m_program.setChildSetup([] {
        // The library and its log may not grow past 96 KiB: what a full disk looks like to a program.
        const rlimit small{.rlim_cur = 96 * 1024, .rlim_max = 96 * 1024};
        setrlimit(RLIMIT_FSIZE, &small);
    });
    const ProgramRun imported = importAll();
    EXPECT_EQ(imported.status, 1) << imported.out.toStdString();
    EXPECT_EQ(imported.json()[QLatin1String("errors")].toObject().keys(),
              QStringList{m_papers.path(QStringLiteral("big.pdf"))});

    m_program.setChildSetup({});
    EXPECT_EQ(idsByTitle().keys(), QStringList{QStringLiteral("Good")});
    EXPECT_EQ(importAll().json()[QLatin1String("indexed")].toArray().size(), 1);
}

TEST_F(BadLibrary, SaysWhichFolderCannotHoldTheLibrary)
{
    const QString blocker = m_papers.write(QStringLiteral("blocker"), "a file where a folder should be");
    m_program.setEnvironment(QStringLiteral("XDG_DATA_HOME"), blocker);
    const ProgramRun listed = m_program.run({QStringLiteral("list")});
    EXPECT_EQ(listed.status, 1);
    EXPECT_TRUE(listed.err.contains(u"The library database could not be opened."))
        << listed.err.toStdString();
    EXPECT_TRUE(listed.err.contains(blocker)) << listed.err.toStdString();
}

/// A data folder that nothing can be written to, as on a disk mounted for reading only.
class ReadOnlyFolder : public BadLibrary
{
protected:
    void TearDown() override { allow(0700, 0600); }

    void allow(mode_t folder, mode_t file)
    {
        chmod(m_program.libraryPath().toLocal8Bit().constData(), file);
        ASSERT_EQ(chmod(m_program.dataFolder().toLocal8Bit().constData(), folder), 0);
    }

    QString complaintOfList()
    {
        m_program.setChildSetup(loseRightsOfRoot);
        const ProgramRun listed = m_program.run({QStringLiteral("list")});
        EXPECT_EQ(listed.status, 1);
        EXPECT_TRUE(listed.err.contains(m_program.libraryPath())) << listed.err.toStdString();
        return listed.err;
    }
};

TEST_F(ReadOnlyFolder, WithALibraryIsSaidToBeSo)
{
    ASSERT_EQ(importAll().status, 0);
    allow(0500, 0400);
    const QString complaint = complaintOfList();
    EXPECT_TRUE(complaint.contains(m_program.libraryPath() + u" or its folder is read-only"))
        << complaint.toStdString();
}

TEST_F(ReadOnlyFolder, WithALibraryThatMayBeWrittenIsSaidToBeSo)
{
    ASSERT_EQ(importAll().status, 0);
    allow(0500, 0600);
    const QString complaint = complaintOfList();
    EXPECT_TRUE(complaint.contains(m_program.libraryPath() + u" or its folder is read-only"))
        << complaint.toStdString();
}

TEST_F(ReadOnlyFolder, WithoutALibraryIsSaidToHoldNone)
{
    ASSERT_TRUE(QDir().mkpath(m_program.dataFolder()));
    allow(0500, 0600);
    const QString complaint = complaintOfList();
    EXPECT_TRUE(complaint.contains(u"The library database could not be opened.")) << complaint.toStdString();
}

TEST_F(BadLibrary, SaysThatTheLibraryIsNotADatabase)
{
    QDir().mkpath(m_program.dataFolder());
    const QByteArray text = "this is a letter to my aunt, not a database; it is long enough to be looked at";
    QFile file(m_program.libraryPath());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text.repeated(100));
    file.close();
    const ProgramRun listed = m_program.run({QStringLiteral("list")});
    EXPECT_EQ(listed.status, 1);
    EXPECT_TRUE(listed.err.contains(m_program.libraryPath())) << listed.err.toStdString();
    EXPECT_TRUE(listed.err.contains(u"not a database")) << listed.err.toStdString();
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), text.repeated(100)) << "it is left as it was";
}

/// A library with one paper, open in another program as well.
class SharedLibrary : public BadLibrary
{
protected:
    void SetUp() override
    {
        BadLibrary::SetUp();
        ASSERT_EQ(importAll().status, 0);
        ASSERT_EQ(sqlite3_open(m_program.libraryPath().toUtf8().constData(), &m_database), SQLITE_OK);
    }
    void TearDown() override { sqlite3_close(m_database); }
    void execute(const char *sql)
    {
        ASSERT_EQ(sqlite3_exec(m_database, sql, nullptr, nullptr, nullptr), SQLITE_OK);
    }

    sqlite3 *m_database = nullptr;
};

TEST_F(SharedLibrary, OfANewerVersionIsRefusedAndKeepsItsVersionAndRows)
{
    execute("PRAGMA user_version = 10");
    const auto rows = [this] {
        return RawDatabase(m_program.libraryPath())
            .texts("SELECT id || title || filepath || content_hash FROM papers "
                   "UNION ALL SELECT paper_id || page_num || content FROM fts_papers "
                   "UNION ALL SELECT paper_id || tag FROM tags");
    };
    const QStringList before = rows();
    ASSERT_GE(before.size(), 2) << "a paper and its page";
    const ProgramRun listed = m_program.run({QStringLiteral("list")});
    EXPECT_EQ(listed.status, 1);
    EXPECT_TRUE(listed.err.contains(u"newer version")) << listed.err.toStdString();
    EXPECT_TRUE(listed.err.contains(m_program.libraryPath()));
    EXPECT_EQ(RawDatabase(m_program.libraryPath()).text("PRAGMA user_version"), u"10");
    EXPECT_EQ(rows(), before);
}

TEST_F(SharedLibrary, LockedByAnotherProgramIsSaidSo)
{
    execute("PRAGMA locking_mode = EXCLUSIVE");
    execute("PRAGMA journal_mode = DELETE");
    execute("BEGIN EXCLUSIVE");
    const ProgramRun listed = m_program.run({QStringLiteral("list")});
    EXPECT_EQ(listed.status, 1);
    EXPECT_TRUE(listed.err.contains(u"locked")) << listed.err.toStdString();
    EXPECT_TRUE(listed.err.contains(m_program.libraryPath()));
}
