// Papers opened from the command line, and the session that opens them again: whole programs, seen from
// outside by what they write into the session file.
#include "desktop/DesktopProcessFixture.h"
#include "desktop/SessionFile.h"
#include "reader/PDFOpenRequest.h"
#include "support/PdfBuilder.h"
#include "support/Programs.h"

#include <QDir>
#include <QFileInfo>
#include <QUrl>

class ReaderProcessTest : public DesktopProcessFixture
{
protected:
    ReaderProcessTest() { EXPECT_TRUE(QDir().mkpath(m_home.path(QStringLiteral("data/Quirevault")))); }

    /// Runs a command to its end and answers what it printed.
    QByteArray run(const QStringList &arguments)
    {
        DesktopProcess process(m_home, m_bus.address());
        process.start(arguments);
        EXPECT_EQ(process.status(), 0) << process.standardError().toStdString();
        return process.standardOutput();
    }

    /// Puts the paper into the library and answers its id.
    QString import()
    {
        run({QStringLiteral("import"), m_paper});
        const QByteArray papers = run({QStringLiteral("list"), QStringLiteral("--json")});
        return QJsonDocument::fromJson(papers).array()[0].toObject()[QLatin1String("id")].toString();
    }

    static bool knowsItsPaper(const QJsonObject &request)
    {
        return request.contains(QLatin1String("paperId"));
    }

    /// It arrived there, if the window was asked for that page.
    static bool isOnPageTwo(const QJsonObject &request)
    {
        return knowsItsPaper(request) && request[QLatin1String("page")].toInt() == 2;
    }

    /// What a program leaves behind in which the paper is open, but which has not found it in the library.
    QJsonObject paperWithoutItsId() const { return toJson({.id = QUuid::createUuid(), .url = m_url}); }

    QByteArray content(const QString &file) const
    {
        QFile found(m_home.path(file));
        EXPECT_TRUE(found.open(QIODevice::ReadOnly)) << file.toStdString();
        return found.readAll();
    }

    /// Takes the paper's id out of the file: only an open window finds it again.
    void forgetPaper()
    {
        QJsonObject request = m_session.requests()[0].toObject();
        request.remove(QLatin1String("paperId"));
        m_session.write({request});
    }

    /// Its second page says something in its middle, which no other page is near to.
    QByteArray threePages() const
    {
        QStringList lines(30, QStringLiteral("On trees"));
        lines.append(QStringLiteral("On homotopy"));
        return PdfBuilder().page(QStringList()).page(lines).page(QStringList()).build();
    }

    QString m_paper = m_home.write(QStringLiteral("knots and trees.pdf"), threePages());
    QUrl m_url = QUrl::fromLocalFile(m_paper);
    SessionFile m_session{m_home.path(QStringLiteral("data/Quirevault/session.json"))};
};

TEST_F(ReaderProcessTest, OpensAFileOfTheWorkingFolder)
{
    DesktopProcess program(m_home, m_bus.address());
    program.setWorkingFolder(m_home.path());
    startAndWait(program, {QStringLiteral("knots and trees.pdf")});
    const QJsonObject request = m_session.await([](const QJsonObject &) { return true; });
    EXPECT_EQ(QUrl(request[QLatin1String("url")].toString()), m_url);
    quit(program);
    EXPECT_EQ(m_session.requests().size(), 1) << "quitting closes no paper";
}

TEST_F(ReaderProcessTest, HandsAFileToTheProgramThatRuns)
{
    DesktopProcess first(m_home, m_bus.address());
    startAndWait(first);
    run({m_paper, m_paper});
    EXPECT_TRUE(first.isRunning());
    quit(first);
    ASSERT_EQ(m_session.requests().size(), 2);
    EXPECT_EQ(QUrl(m_session.requests()[0].toObject()[QLatin1String("url")].toString()), m_url);
}

TEST_F(ReaderProcessTest, OpensAPaperByAPrefixOfItsIdWhereItWasAskedTo)
{
    const QString id = import();
    DesktopProcess program(m_home, m_bus.address());
    startAndWait(program, {QStringLiteral("open"), id.left(8), QStringLiteral("--page"), QStringLiteral("2"),
                           QStringLiteral("--text"), QStringLiteral("homotopy")});
    const QJsonObject request = m_session.await(isOnPageTwo);
    EXPECT_EQ(request[QLatin1String("paperId")].toString(), id);
    EXPECT_EQ(request[QLatin1String("searchText")].toString(), u"homotopy");
    quit(program);
}

TEST_F(ReaderProcessTest, StartsNothingWhenOneFileIsMissing)
{
    DesktopProcess program(m_home, m_bus.address());
    program.start({m_paper, QStringLiteral("gone.pdf")});
    EXPECT_EQ(program.status(), 1);
    EXPECT_EQ(program.standardError(), "quirevault: gone.pdf: There is no such file\n");
    DesktopProcess folder(m_home, m_bus.address());
    folder.start({m_home.path()});
    EXPECT_EQ(folder.status(), 1);
    EXPECT_TRUE(folder.standardError().contains("It is a folder"));
}

TEST_F(ReaderProcessTest, OpensNoPageThatAPaperDoesNotHave)
{
    const QString id = import();
    for (const char *page : {"0", "4", "two"}) {
        DesktopProcess program(m_home, m_bus.address());
        program.start({QStringLiteral("open"), id, QStringLiteral("--page"), QLatin1String(page)});
        EXPECT_EQ(program.status(), 2) << page;
    }
}

TEST_F(ReaderProcessTest, RefusesARequestThatIsNone)
{
    DesktopProcess program(m_home, m_bus.address());
    const QString desktop = QFileInfo(commandLineProgram()).path() + QStringLiteral("/quirevault-desktop");
    program.start({QStringLiteral("--open-request"), QStringLiteral("{")}, desktop);
    EXPECT_EQ(program.status(), 2);
    EXPECT_TRUE(program.standardError().contains("The window to open is not described in JSON"));
}

TEST_F(ReaderProcessTest, RestoresTheSessionAfterQuitting)
{
    import();
    DesktopProcess program(m_home, m_bus.address());
    startAndWait(program, {m_paper});
    const QJsonObject before = m_session.await(knowsItsPaper);
    quit(program);
    ASSERT_EQ(m_session.requests().size(), 1);
    forgetPaper();

    DesktopProcess next(m_home, m_bus.address());
    startAndWait(next);
    const QJsonObject after = m_session.await(knowsItsPaper);
    EXPECT_EQ(after[QLatin1String("id")], before[QLatin1String("id")]);
    quit(next);
}

TEST_F(ReaderProcessTest, RestoresTheSessionAtItsPageAfterTheProgramWasKilled)
{
    const QString id = import();
    DesktopProcess program(m_home, m_bus.address());
    startAndWait(program, {QStringLiteral("open"), id, QStringLiteral("--page"), QStringLiteral("2")});
    const QJsonObject before = m_session.await(isOnPageTwo);
    program.kill();
    forgetPaper();

    DesktopProcess next(m_home, m_bus.address());
    startAndWait(next);
    const QJsonObject after = m_session.await(isOnPageTwo);
    EXPECT_EQ(after, before);
    quit(next);
}

TEST_F(ReaderProcessTest, RestoresWhatItCanReadOfADamagedSession)
{
    import();
    m_session.write(
        {QJsonObject{{QStringLiteral("id"), 3}}, QStringLiteral("nonsense"), paperWithoutItsId()});
    DesktopProcess program(m_home, m_bus.address());
    startAndWait(program);
    const QJsonObject restored = m_session.await(knowsItsPaper);
    EXPECT_EQ(QUrl(restored[QLatin1String("url")].toString()), m_url);
    quit(program);
    EXPECT_EQ(program.standardOutput().count("Failed to load session: "), 2);
}

TEST_F(ReaderProcessTest, StartsWithoutPapersFromASessionThatIsNone)
{
    m_home.write(QStringLiteral("data/Quirevault/session.json"), "[{\"id\":");
    DesktopProcess program(m_home, m_bus.address());
    startAndWait(program);
    quit(program);
    EXPECT_TRUE(program.standardOutput().startsWith("Failed to load session: "));
    EXPECT_EQ(content(QStringLiteral("data/Quirevault/session.json")), "[]");
}

TEST_F(ReaderProcessTest, AsksBeforeItOpensPapersAfterTwoCrashes)
{
    import();
    m_session.write({paperWithoutItsId()});
    for (int crashes = 0; crashes < 2; ++crashes) {
        DesktopProcess program(m_home, m_bus.address());
        startAndWait(program);
        m_session.await(knowsItsPaper); // so its window is open
        crash(program);
        forgetPaper();
    }
    const QByteArray twoBadEnds = "badEndsAfterRestoring=2";
    const QString preferences = QStringLiteral("config/Quirevault/Quirevault.ini");
    EXPECT_TRUE(content(preferences).contains(twoBadEnds));

    DesktopProcess program(m_home, m_bus.address());
    startAndWait(program);
    quit(program);
    EXPECT_TRUE(content(preferences).contains(twoBadEnds)) << "what opens no paper proves none harmless";
    ASSERT_EQ(m_session.requests().size(), 1) << "and forgets none";
    EXPECT_FALSE(knowsItsPaper(m_session.requests()[0].toObject()));
}
