// Files and folders that go wrong: each is named with its reason, and the rest of the batch is done.
#include "program/LibraryFixture.h"
#include "support/RawDatabase.h"

#include <linux/capability.h>
#include <sqlite3.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace
{
/// Root may read and write everything unless these rights are taken away; for others this does nothing.
void loseRightsOfRoot()
{
    prctl(PR_CAPBSET_DROP, CAP_DAC_OVERRIDE);
    prctl(PR_CAPBSET_DROP, CAP_DAC_READ_SEARCH);
}
} // namespace

class BadInput : public LibraryFixture
{
protected:
    void SetUp() override { paper(QStringLiteral("good.pdf"), {QStringLiteral("The good one")}, "Good"); }

    QByteArray local(const QString &name) const { return m_papers.path(name).toLocal8Bit(); }

    /// Imports the folder; the good paper must come in, and `name` fail for a reason that contains `reason`.
    void expectRefused(const QString &name, const QString &reason)
    {
        const ProgramRun imported = importAll();
        EXPECT_EQ(imported.status, 1);
        EXPECT_EQ(imported.json()[QLatin1String("indexed")].toArray().size(), 1);
        const QJsonObject errors = imported.json()[QLatin1String("errors")].toObject();
        EXPECT_EQ(errors.keys(), QStringList{m_papers.path(name)});
        const QString text = errors.value(m_papers.path(name)).toString();
        EXPECT_TRUE(text.contains(reason)) << text.toStdString();
        EXPECT_TRUE(imported.err.contains(text)) << "the failure is named on standard error";
        EXPECT_EQ(imported.err.count(u'\n'), 1) << imported.err.toStdString();
    }
    void expectContentRefused(const QByteArray &content, const QString &reason)
    {
        m_papers.write(QStringLiteral("bad.pdf"), content);
        expectRefused(QStringLiteral("bad.pdf"), reason);
    }
};

TEST_F(BadInput, RefusesAnEmptyFile)
{
    expectContentRefused(QByteArray(), QStringLiteral("Failed to load PDF: "));
}

TEST_F(BadInput, RefusesAFileThatOnlyStartsLikeAPDF)
{
    expectContentRefused("%PDF-1.7\nnothing else\n", QStringLiteral("damaged"));
}

TEST_F(BadInput, RefusesAPictureNamedPdf)
{
    expectContentRefused("\x89PNG\r\n\x1a\n0000IHDR", QStringLiteral("not a PDF"));
}

TEST_F(BadInput, RefusesRandomBytes)
{
    QByteArray noise(65536, Qt::Uninitialized);
    quint32 state = 1;
    for (char &byte : noise)
        byte = static_cast<char>((state = state * 1664525u + 1013904223u) >> 24);
    expectContentRefused(noise, QStringLiteral("not a PDF"));
}

TEST_F(BadInput, RefusesAFileThatNeedsAPassword)
{
    expectContentRefused(
        PdfBuilder().title("Locked").lock(PdfLock::NeedsPassword).page({QStringLiteral("secret")}).build(),
        QStringLiteral("password"));
}

TEST_F(BadInput, StoresAFileWithoutATextLayer)
{
    m_papers.write(QStringLiteral("scan.pdf"), PdfBuilder().title("Scan").page(QStringList{}).build());
    EXPECT_EQ(importAll().status, 0);
    EXPECT_TRUE(idsByTitle().contains(QStringLiteral("Scan")));
}

TEST_F(BadInput, KeepsThePagesThatCanBeRead)
{
    m_papers.write(QStringLiteral("holes.pdf"), PdfBuilder()
                                                    .title("Holes")
                                                    .page({QStringLiteral("before")})
                                                    .page(PdfPage{.isBroken = true})
                                                    .page({QStringLiteral("afterwards")})
                                                    .build());
    EXPECT_EQ(importAll().status, 0);
    EXPECT_EQ(
        m_program.run({QStringLiteral("search"), QStringLiteral("--json"), QStringLiteral("afterwards")})
            .json()
            .array()
            .size(),
        1);
}

TEST_F(BadInput, IsNotFooledByAClaimedPageCount)
{
    m_papers.write(
        QStringLiteral("liar.pdf"),
        PdfBuilder().title("Liar").page({QStringLiteral("only one")}).claimPageCount(1'000'000'000).build());
    EXPECT_EQ(importAll().status, 0);
    EXPECT_EQ(m_program.run({QStringLiteral("search"), QStringLiteral("--json"), QStringLiteral("only")})
                  .json()
                  .array()
                  .size(),
              1);
}

TEST_F(BadInput, RefusesAFolderByName)
{
    QDir(m_papers.path()).mkdir(QStringLiteral("folder.pdf"));
    expectRefused(QStringLiteral("folder.pdf"), QStringLiteral("folder"));
}

TEST_F(BadInput, RefusesAFifoByName)
{
    ASSERT_EQ(mkfifo(local(QStringLiteral("pipe.pdf")).constData(), 0600), 0);
    expectRefused(QStringLiteral("pipe.pdf"), QStringLiteral("named pipe"));
}

TEST_F(BadInput, RefusesASocketByName)
{
    const int socketFd = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
    qstrncpy(address.sun_path, local(QStringLiteral("s.pdf")).constData(), sizeof address.sun_path);
    ASSERT_EQ(bind(socketFd, reinterpret_cast<const sockaddr *>(&address), sizeof address), 0);
    expectRefused(QStringLiteral("s.pdf"), QStringLiteral("socket"));
    close(socketFd);
}

TEST_F(BadInput, RefusesADanglingLink)
{
    ASSERT_EQ(symlink("nowhere", local(QStringLiteral("link.pdf")).constData()), 0);
    expectRefused(QStringLiteral("link.pdf"), QStringLiteral("No such file"));
}

TEST_F(BadInput, RefusesAFileThatMayNotBeRead)
{
    const QString locked = paper(QStringLiteral("locked.pdf"), {QStringLiteral("x")});
    ASSERT_EQ(chmod(locked.toLocal8Bit().constData(), 0), 0);
    m_program.setChildSetup(loseRightsOfRoot);
    expectRefused(QStringLiteral("locked.pdf"), QStringLiteral("Permission denied"));
}

TEST_F(BadInput, NamesAPathThatDoesNotExist)
{
    const ProgramRun imported =
        m_program.run({QStringLiteral("import"), m_papers.path(QStringLiteral("gone.pdf"))});
    EXPECT_EQ(imported.status, 1);
    EXPECT_TRUE(imported.err.contains(m_papers.path(QStringLiteral("gone.pdf"))))
        << imported.err.toStdString();
    EXPECT_EQ(imported.out, u"0 indexed, 1 failed, 0 already in the library\n");
}

TEST_F(BadInput, StoresAndFindsOddFileNames)
{
    const QString odd =
        paper(QStringLiteral("it's \"odd\"\nname 🧪.pdf"), {QStringLiteral("unusual words")});
    EXPECT_EQ(importAll().status, 0);
    const ProgramRun found =
        m_program.run({QStringLiteral("search"), QStringLiteral("--json"), QStringLiteral("unusual")});
    ASSERT_EQ(found.json().array().size(), 1);
    EXPECT_EQ(found.json().array().first()[QLatin1String("filepath")].toString(), odd);
    EXPECT_EQ(m_program.run({QStringLiteral("search"), QStringLiteral("unusual")}).out.split(u'\n').size(),
              4);
}

TEST_F(BadInput, RefusesANameThatIsNotUtf8)
{
    const QByteArray good = PdfBuilder().page({QStringLiteral("x")}).build();
    const std::string raw = m_papers.path().toStdString() + "/caf\xE9.pdf";
    FILE *file = fopen(raw.c_str(), "w");
    ASSERT_NE(file, nullptr);
    fwrite(good.constData(), 1, static_cast<size_t>(good.size()), file);
    fclose(file);
    const ProgramRun imported = importAll();
    EXPECT_EQ(imported.status, 1);
    EXPECT_EQ(imported.json()[QLatin1String("errors")].toObject().keys(),
              QStringList{m_papers.path(QStringLiteral("caf\\xe9.pdf"))});
    EXPECT_EQ(imported.json()[QLatin1String("indexed")].toArray().size(), 1);
    EXPECT_EQ(unlink(raw.c_str()), 0); // Qt, whose folder this is, cannot name it
}

TEST_F(BadInput, CleansAndCutsHugeAttributes)
{
    m_papers.write(QStringLiteral("huge.pdf"),
                   PdfBuilder()
                       .title(QByteArray("Huge \\000\\001") + QByteArray(1'000'000, 'x'))
                       .page({QStringLiteral("x")})
                       .build());
    m_papers.write(QStringLiteral("half.pdf"),
                   PdfBuilder().title("\\376\\377\\330\\000\\000A").page({QStringLiteral("y")}).build());
    EXPECT_EQ(importAll().status, 0);
    for (const QString &title : idsByTitle().keys()) {
        EXPECT_LE(title.size(), 1000);
        EXPECT_FALSE(title.contains(QChar(0)));
        EXPECT_TRUE(title.isValidUtf16());
    }
}

TEST_F(BadInput, SaysThatThereIsNoSpaceLeftAndKeepsTheLibraryWhole)
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

TEST_F(BadInput, SaysWhichFolderCannotHoldTheLibrary)
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
class ReadOnlyFolder : public BadInput
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

TEST_F(BadInput, SaysThatTheLibraryIsNotADatabase)
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

class BadLibrary : public BadInput
{
protected:
    void SetUp() override
    {
        BadInput::SetUp();
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

TEST_F(BadLibrary, OfANewerVersionIsRefusedAndKeepsItsVersionAndRows)
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

TEST_F(BadLibrary, LockedByAnotherProgramIsSaidSo)
{
    execute("PRAGMA locking_mode = EXCLUSIVE");
    execute("PRAGMA journal_mode = DELETE");
    execute("BEGIN EXCLUSIVE");
    const ProgramRun listed = m_program.run({QStringLiteral("list")});
    EXPECT_EQ(listed.status, 1);
    EXPECT_TRUE(listed.err.contains(u"locked")) << listed.err.toStdString();
    EXPECT_TRUE(listed.err.contains(m_program.libraryPath()));
}
