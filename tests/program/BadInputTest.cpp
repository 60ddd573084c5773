// Files and folders that go wrong: each is named with its reason, and the rest of the batch is done.
#include "program/LibraryFixture.h"
#include "support/LoseRightsOfRoot.h"

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

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
    /// Imports the folder of `files`: whatever becomes of the odd one, it ends, and the good paper is found.
    void expectOneOutcomeEach(qsizetype files)
    {
        const ProgramRun imported = importAll();
        EXPECT_TRUE(imported.status == 0 || imported.status == 1) << imported.status;
        EXPECT_EQ(imported.json()[QLatin1String("indexed")].toArray().size() +
                      imported.json()[QLatin1String("errors")].toObject().size(),
                  files);
        EXPECT_TRUE(idsByTitle().contains(QStringLiteral("Good")));
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

TEST_F(BadInput, SurvivesAPageTreeThatGoesInCircles)
{
    const QByteArray loop =
        "%PDF-1.4\n1 0 obj\n<</Type/Catalog/Pages 2 0 R>>\nendobj\n"
        "2 0 obj\n<</Type/Pages/Count 1/Kids[2 0 R]>>\nendobj\ntrailer<</Root 1 0 R>>\n%%EOF\n";
    m_papers.write(QStringLiteral("loop.pdf"), loop);
    expectOneOutcomeEach(2);
}

TEST_F(BadInput, SurvivesAPageOfAMillionPoints)
{
    m_papers.write(QStringLiteral("wide.pdf"), PdfBuilder()
                                                   .title("Wide")
                                                   .page(PdfPage{.lines = {QStringLiteral("far away")},
                                                                 .mediaBox = PdfBox{0, 0, 1e6, 1e6}})
                                                   .build());
    EXPECT_EQ(importAll().status, 0);
    EXPECT_EQ(m_program.run({QStringLiteral("search"), QStringLiteral("--json"), QStringLiteral("away")})
                  .json()
                  .array()
                  .size(),
              1);
}

TEST_F(BadInput, SurvivesAStreamThatUnpacksToAThousandTimesItsSize)
{
    // Twice packed, 200 MB of blanks take less than a kilobyte; qCompress puts four bytes before zlib's own.
    const QByteArray packed = qCompress(qCompress(QByteArray(200'000'000, ' '), 1).sliced(4), 9).sliced(4);
    const QByteArray bomb =
        "%PDF-1.4\n1 0 obj\n<</Type/Catalog/Pages 2 0 R>>\nendobj\n"
        "2 0 obj\n<</Type/Pages/Count 1/Kids[3 0 R]>>\nendobj\n"
        "3 0 obj\n<</Type/Page/Parent 2 0 R/MediaBox[0 0 100 100]/Contents 4 0 R>>\nendobj\n"
        "4 0 obj\n<</Filter[/FlateDecode/FlateDecode]/Length " +
        QByteArray::number(packed.size()) + ">>\nstream\n" + packed +
        "\nendstream\nendobj\ntrailer<</Root 1 0 R>>\n%%EOF\n";
    m_papers.write(QStringLiteral("bomb.pdf"), bomb);
    expectOneOutcomeEach(2);
}

TEST_F(BadInput, RefusesATruncatedFile)
{
    const QByteArray whole = PdfBuilder().title("Whole").page({QStringLiteral("x")}).build();
    expectContentRefused(whole.first(60), QStringLiteral("damaged"));
}

TEST_F(BadInput, StoresADocumentWithoutPages)
{
    m_papers.write(QStringLiteral("none.pdf"), PdfBuilder().title("None").build());
    EXPECT_EQ(importAll().status, 0);
    const ProgramRun shown = m_program.run(
        {QStringLiteral("show"), QStringLiteral("--json"), idsByTitle().value(QStringLiteral("None"))});
    EXPECT_EQ(shown.json()[QLatin1String("page_count")].toInt(-1), 0);
    EXPECT_EQ(shown.json()[QLatin1String("cover_path")].toString(), QString());
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
