// Reader windows and the session that remembers them.
#include "desktop/Windows.h"

#include "app/SessionManager.h"
#include "platform/Preferences.h"
#include "reader/PDFViewerWindow.h"
#include "reader/ReaderServices.h"
#include "support/FakeClock.h"
#include "support/Gate.h"
#include "support/TestLibrary.h"

#include <QApplication>
#include <gtest/gtest.h>

namespace
{

/// After it a reader asks the library for its paper, also when it has no page to show.
constexpr std::chrono::milliseconds kPatience{250};

class WindowsTest : public testing::Test
{
protected:
    ~WindowsTest() override
    {
        while (PDFViewerWindow *window = readerWindow())
            delete window;
        takeAnswers();
    }

    /// Opens a window for a file that is not there; the session knows of nothing else.
    PDFOpenRequest openReader()
    {
        const PDFOpenRequest request{.id = QUuid::createUuid(), .url = QUrl::fromLocalFile(m_file)};
        m_opened = showReaderWindow(request, m_services, m_sessions, [this] { return m_isQuitting; });
        return request;
    }

    static PDFViewerWindow *readerWindow()
    {
        for (QWidget *window : QApplication::topLevelWidgets()) {
            if (auto *reader = qobject_cast<PDFViewerWindow *>(window))
                return reader;
        }
        return nullptr;
    }

    /// Waits for all that the library was asked, and hands it to those who asked. Nothing else happens.
    void takeAnswers()
    {
        static_cast<void>(m_library.service.paperById(QString()).result().has_value());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::FutureCallOut);
    }

    /// Makes the file that readers are opened for a paper.
    void addPaper()
    {
        m_library.run(QStringLiteral("INSERT INTO papers (id, title, filepath) VALUES ('p', 'Trees', ?)"),
                      {m_file});
    }

    QList<PDFOpenRequest> listed() const { return m_sessions.activeSessions; }

    TestLibrary m_library;
    const QByteArray m_home = m_library.folder.path().toLocal8Bit();
    const bool m_isAtHome = qputenv("QT_QPA_PLATFORM", "offscreen") && qputenv("XDG_CONFIG_HOME", m_home) &&
                            qputenv("XDG_RUNTIME_DIR", m_home);
    int m_argc = 0;
    QApplication m_application{m_argc, nullptr};
    const QString m_file = m_library.folder.path(QStringLiteral("p.pdf"));
    FakeClock m_clock;
    Preferences m_preferences;
    SessionManager m_sessions{m_library.folder.path(QStringLiteral("session.json")), m_clock};
    ReaderServices m_services{.library = m_library.service,
                              .bookmarkEvents = m_library.bookmarkEvents,
                              .searchInPaper = {},
                              .clock = m_clock,
                              .preferences = m_preferences};
    OpenedWindow m_opened;
    bool m_isQuitting = false;
};

} // namespace

TEST_F(WindowsTest, ListsAReaderInTheSessionWhileItIsOpen)
{
    const PDFOpenRequest request = openReader();
    EXPECT_TRUE(m_opened.isOpen());
    EXPECT_EQ(listed(), QList{request});
    EXPECT_TRUE(m_opened.close());
    EXPECT_FALSE(m_opened.isOpen());
    EXPECT_TRUE(listed().isEmpty());
}

TEST_F(WindowsTest, KeepsAReaderInTheSessionThatClosesBecauseTheProgramQuits)
{
    const PDFOpenRequest request = openReader();
    m_isQuitting = true;
    EXPECT_TRUE(m_opened.close());
    EXPECT_EQ(listed(), QList{request});
}

TEST_F(WindowsTest, ListsAReaderThatOpensWhileTheProgramQuits)
{
    m_isQuitting = true;
    const PDFOpenRequest request = openReader();
    EXPECT_TRUE(m_opened.close());
    EXPECT_EQ(listed(), QList{request}) << "it comes back at the next start";
}

TEST_F(WindowsTest, ListsAReaderOnceThatTheSessionHeldAlready)
{
    PDFOpenRequest request = openReader();
    m_opened.close();
    request.page = 3;
    m_sessions.registerRequest(request);
    showReaderWindow(request, m_services, m_sessions, [] { return false; });
    EXPECT_EQ(listed(), QList{request});
}

TEST_F(WindowsTest, ListsWhatItLearnsOfAReader)
{
    addPaper();
    openReader();
    m_clock.advance(kPatience);
    takeAnswers();
    ASSERT_EQ(listed().size(), 1);
    EXPECT_EQ(listed().first().paperId, QStringLiteral("p"));
}

TEST_F(WindowsTest, DoesNotListAClosedReaderAgainForWhatItStillLearns)
{
    addPaper();
    Gate gate(m_library.db);
    openReader();
    const QPointer<PDFViewerWindow> window = readerWindow();
    m_clock.advance(kPatience);
    m_opened.close();
    gate.open();
    takeAnswers();
    ASSERT_TRUE(window) << "it goes with the next turn of the event loop";
    EXPECT_EQ(window->request().paperId, QStringLiteral("p")) << "it has heard";
    EXPECT_TRUE(listed().isEmpty());
}
