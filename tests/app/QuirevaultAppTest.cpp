#include "app/QuirevaultApp.h"

#include "app/RestoreGuard.h"
#include "app/SessionManager.h"
#include "platform/Preferences.h"
#include "support/FakeClock.h"
#include "support/Printing.h"
#include "support/TemporaryFolder.h"
#include "support/UpdaterFixture.h"

#include <QFile>
#include <gtest/gtest.h>

namespace
{

PDFOpenRequest requestFor(const QString &path)
{
    return {.id = QUuid::createUuidV5(QUuid(), path), .url = QUrl::fromLocalFile(path)};
}

/// A window that is there only in a test's books.
struct PretendedWindow {
    bool isOpen = true;
    bool agreesToClose = true;
    int broughtForward = 0;

    OpenedWindow opened()
    {
        return {.isOpen = [this] { return isOpen; },
                .bringForward = [this] { ++broughtForward; },
                .close =
                    [this] {
                        isOpen = isOpen && !agreesToClose;
                        return agreesToClose;
                    }};
    }
};

} // namespace

class QuirevaultAppTest : public testing::Test
{
protected:
    void SetUp() override
    {
        qputenv("XDG_CONFIG_HOME", m_folder.path().toLocal8Bit());
        testing::internal::CaptureStdout(); // what the session has to say
    }
    void TearDown() override { testing::internal::GetCapturedStdout(); }

    OpenedWindow makeReader(const PDFOpenRequest &request)
    {
        m_requests.append(request);
        return m_readers.emplace_back(std::make_unique<PretendedWindow>())->opened();
    }

    QuirevaultApp &app()
    {
        if (!m_app) {
            m_app = std::make_unique<QuirevaultApp>(QuirevaultApp::Collaborators{
                .sessions = m_sessions,
                .restoreGuard = m_guard,
                .makeLibraryWindow =
                    [this](QuirevaultApp &) {
                        ++m_librariesMade;
                        m_library = {};
                        return m_library.opened();
                    },
                .makeReaderWindow = [this](const PDFOpenRequest &request) { return makeReader(request); },
                .askToReopen = [this](auto answer) { m_answer = answer; },
                .showAbout = [this] { ++m_aboutShown; },
                .updates = {.http = m_http,
                            .preferences = m_preferences,
                            .clock = m_clock,
                            .opener = m_opener,
                            .program = {},
                            .builtInFeed = m_updateFeed,
                            .folder = m_folder.path(),
                            .timeouts = {},
                            .showWindow =
                                [this](Updater &, Updater::Attention) {
                                    ++m_updatesShown;
                                }},
                .findPaper =
                    [this](const QString &id) {
                        m_lookedUp = id;
                        return QtFuture::makeReadyFuture(m_found);
                    },
                .searchLibrary = [this](const QString &text) { m_searched = text; },
                .showProblem =
                    [this](const QString &message) {
                        m_problem = message;
                    }});
        }
        return *m_app;
    }

    TemporaryFolder m_folder;
    FakeClock m_clock;
    SessionManager m_sessions{m_folder.path(QStringLiteral("session.json")), m_clock};
    Preferences m_preferences;
    RestoreGuard m_guard{m_preferences, m_clock};
    std::function<void(bool reopen)> m_answer; ///< once it was asked whether to open papers again
    int m_librariesMade = 0;
    PretendedWindow m_library;
    std::vector<std::unique_ptr<PretendedWindow>> m_readers;
    QList<PDFOpenRequest> m_requests;
    int m_aboutShown = 0;
    QString m_lookedUp;
    Result<std::optional<Paper>> m_found;
    QString m_searched;
    QString m_problem;
    CurlHttpClient m_http;
    RecordingFileOpener m_opener;
    QString m_updateFeed;
    int m_updatesShown = 0;
    std::unique_ptr<QuirevaultApp> m_app;
};

TEST_F(QuirevaultAppTest, OpensTheLibraryWindowAtItsStart)
{
    app().start();
    EXPECT_EQ(m_librariesMade, 1);
}

TEST_F(QuirevaultAppTest, MayStartWithoutAWindow)
{
    app().startWithoutWindow();
    EXPECT_EQ(m_librariesMade, 0);
    EXPECT_TRUE(m_requests.isEmpty());
}

TEST_F(QuirevaultAppTest, OpensAPaperByItsIdAlone)
{
    m_found = std::optional(Paper{.id = QStringLiteral("p"),
                                  .title = {},
                                  .authors = {},
                                  .year = {},
                                  .coverPath = {},
                                  .filepath = QStringLiteral("/ä b.pdf"),
                                  .tags = {}});
    app().openPaper(QStringLiteral("p"));
    EXPECT_EQ(m_lookedUp, QStringLiteral("p"));
    ASSERT_EQ(m_requests.size(), 1);
    EXPECT_EQ(m_requests[0].url, QUrl::fromLocalFile(QStringLiteral("/ä b.pdf")));
    EXPECT_EQ(m_requests[0].paperId, QStringLiteral("p"));
    EXPECT_EQ(m_librariesMade, 0);
}

TEST_F(QuirevaultAppTest, SaysInTheLibraryThatAPaperIsGone)
{
    app().openPaper(QStringLiteral("p"));
    EXPECT_TRUE(m_requests.isEmpty());
    EXPECT_EQ(m_librariesMade, 1);
    EXPECT_EQ(m_problem, QStringLiteral("This paper is no longer in the library."));
}

TEST_F(QuirevaultAppTest, SaysInTheLibraryWhyAPaperCannotBeFound)
{
    m_found = Error{QStringLiteral("DatabaseManager"), 5, QStringLiteral("database is locked"), {}};
    app().openPaper(QStringLiteral("p"));
    EXPECT_EQ(m_librariesMade, 1);
    EXPECT_EQ(m_problem, QStringLiteral("database is locked"));
}

TEST_F(QuirevaultAppTest, SearchesInTheLibraryWindow)
{
    app().search(QStringLiteral("author:one knots"));
    EXPECT_EQ(m_librariesMade, 1);
    EXPECT_EQ(m_searched, QStringLiteral("author:one knots"));
}

TEST_F(QuirevaultAppTest, BringsTheOneLibraryWindowForward)
{
    app().start();
    app().commands().library->trigger();
    EXPECT_EQ(m_librariesMade, 1);
    EXPECT_EQ(m_library.broughtForward, 1);
}

TEST_F(QuirevaultAppTest, OpensTheLibraryWindowAgainOnceItWasClosed)
{
    app().start();
    m_library.isOpen = false;
    app().commands().library->trigger();
    EXPECT_EQ(m_librariesMade, 2);
    m_library.isOpen = false;
    app().reopen();
    EXPECT_EQ(m_librariesMade, 3);
}

TEST_F(QuirevaultAppTest, OpensOneReaderWindowForEachValue)
{
    app().start();
    const PDFOpenRequest first = requestFor(QStringLiteral("/a.pdf"));
    PDFOpenRequest second = first;
    second.page = 7;
    app().openReaderWindow(first);
    app().openReaderWindow(second);
    app().openReaderWindow(first);
    EXPECT_EQ(m_requests, (QList{first, second}));
    EXPECT_EQ(m_readers[0]->broughtForward, 1);
    EXPECT_EQ(m_readers[1]->broughtForward, 0);
}

TEST_F(QuirevaultAppTest, OpensAReaderWindowAgainOnceItWasClosed)
{
    app().start();
    const PDFOpenRequest request = requestFor(QStringLiteral("/a.pdf"));
    app().openReaderWindow(request);
    m_readers[0]->isOpen = false;
    app().openReaderWindow(request);
    EXPECT_EQ(m_requests.size(), 2);
}

TEST_F(QuirevaultAppTest, OpensFilesAndNothingFromElsewhere)
{
    app().start();
    const QUrl file = QUrl::fromLocalFile(QStringLiteral("/a.pdf"));
    app().openFiles({file, QUrl(QStringLiteral("https://example.org/b.pdf"))});
    ASSERT_EQ(m_requests.size(), 1);
    EXPECT_EQ(m_requests[0].url, file);
}

TEST_F(QuirevaultAppTest, RestoresTheLastSessionOnceAProcess)
{
    const QList requests{requestFor(QStringLiteral("/a.pdf")), requestFor(QStringLiteral("/b.pdf"))};
    for (const PDFOpenRequest &request : requests)
        m_sessions.registerRequest(request);
    app().start();
    EXPECT_EQ(m_requests, requests);
    m_library.isOpen = false;
    app().openLibraryWindow();
    EXPECT_EQ(m_requests, requests);
}

TEST_F(QuirevaultAppTest, OpensNothingButThePapersThatItIsStartedFor)
{
    m_sessions.registerRequest(requestFor(QStringLiteral("/a.pdf")));
    const QList asked{requestFor(QStringLiteral("/b.pdf")), requestFor(QStringLiteral("/c.pdf"))};
    app().start(asked);
    EXPECT_EQ(m_requests, asked);
    EXPECT_EQ(m_librariesMade, 0);
}

TEST_F(QuirevaultAppTest, RestoresTheSessionWithTheLibraryWindowThatComesLater)
{
    const PDFOpenRequest last = requestFor(QStringLiteral("/a.pdf"));
    PDFOpenRequest asked = requestFor(QStringLiteral("/b.pdf"));
    m_sessions.registerRequest(last);
    app().start({asked});
    m_sessions.registerRequest(asked);
    const PDFOpenRequest atFirst = asked;
    asked.page = 7; // it was read meanwhile
    m_sessions.update(asked);
    app().openLibraryWindow();
    EXPECT_EQ(m_requests, (QList{atFirst, last}));
}

TEST_F(QuirevaultAppTest, AsksBeforeItOpensPapersThatMayHaveEndedIt)
{
    m_sessions.registerRequest(requestFor(QStringLiteral("/a.pdf")));
    m_guard.restoring();
    m_guard.restoring();
    app().start();
    EXPECT_EQ(m_librariesMade, 1);
    EXPECT_TRUE(m_requests.isEmpty());
    ASSERT_TRUE(m_answer);
    m_answer(true);
    EXPECT_EQ(m_requests.size(), 1);
}

TEST_F(QuirevaultAppTest, ForgetsThePapersThatThePersonDoesNotWantBack)
{
    m_sessions.registerRequest(requestFor(QStringLiteral("/a.pdf")));
    m_guard.restoring();
    m_guard.restoring();
    app().start();
    ASSERT_TRUE(m_answer);
    m_answer(false);
    EXPECT_TRUE(m_requests.isEmpty());
    EXPECT_TRUE(m_sessions.activeSessions.value().isEmpty());
    EXPECT_FALSE(m_guard.mustAsk());
}

TEST_F(QuirevaultAppTest, SavesTheSessionAtOnceWhenItEnds)
{
    app().start();
    m_sessions.registerRequest(requestFor(QStringLiteral("/a.pdf")));
    app().appDelegate().applicationWillTerminate();
    QFile file(m_folder.path(QStringLiteral("session.json")));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.readAll().contains("a.pdf"));
}

TEST_F(QuirevaultAppTest, SaysThatThereIsNoUpdateService)
{
    app().start();
    const QAction *command = app().commands().checkForUpdates;
    EXPECT_EQ(command->toolTip(), QStringLiteral("No update service is configured."));
    EXPECT_TRUE(command->isEnabled());
    app().commands().checkForUpdates->trigger();
    EXPECT_EQ(m_updatesShown, 1);
    const Updater &updater = *app().appDelegate().updater();
    EXPECT_EQ(updater.phase.value(), UpdatePhase::NotConfigured);
    EXPECT_FALSE(updater.canCheckForUpdates.value());
}

TEST_F(QuirevaultAppTest, LeavesTheCommandAsItIsWhereUpdatesCanBeLookedFor)
{
    m_updateFeed = QStringLiteral("https://updates.example/feed.xml");
    app().start();
    EXPECT_EQ(app().commands().checkForUpdates->toolTip(), QStringLiteral("Check for Updates…"));
    EXPECT_TRUE(app().appDelegate().updater()->canCheckForUpdates.value());
}

TEST_F(QuirevaultAppTest, ShowsTheAboutPanel)
{
    app().start();
    app().commands().about->trigger();
    EXPECT_EQ(m_aboutShown, 1);
}

TEST_F(QuirevaultAppTest, AlwaysLetsAnotherStartReopenTheLibrary)
{
    EXPECT_TRUE(app().appDelegate().applicationShouldHandleReopen(true));
    EXPECT_TRUE(app().appDelegate().applicationShouldHandleReopen(false));
}

TEST_F(QuirevaultAppTest, RunsACommandByItsName)
{
    app().start();
    EXPECT_TRUE(app().runCommand(QStringLiteral("about")));
    EXPECT_EQ(m_aboutShown, 1);
    EXPECT_FALSE(app().runCommand(QStringLiteral("dance")));
}

TEST_F(QuirevaultAppTest, OpensTheLibraryWindowForTheDesktopsMenuEntry)
{
    app().start();
    m_library.isOpen = false;
    EXPECT_TRUE(app().runCommand(QStringLiteral("new-window")));
    EXPECT_EQ(m_librariesMade, 2);
}

TEST_F(QuirevaultAppTest, StaysWhenTheLibraryWindowDoes)
{
    app().start();
    m_library.agreesToClose = false;
    app().openReaderWindow(requestFor(QStringLiteral("/a.pdf")));
    app().commands().quit->trigger();
    EXPECT_TRUE(m_library.isOpen);
    EXPECT_TRUE(m_readers[0]->isOpen);
    EXPECT_FALSE(app().isQuitting());
}
