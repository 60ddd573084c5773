#include "app/QuirevaultApp.h"

#include "app/RestoreGuard.h"
#include "app/SessionManager.h"

#include <QCoreApplication>
#include <QPointer>
#include <QSet>
#include <qcorofuture.h>
#include <utility>

QuirevaultApp::QuirevaultApp(Collaborators collaborators)
    : m_with(std::move(collaborators))
    , m_appDelegate(m_with.sessions, m_with.updates)
    , m_commands({.showAbout = m_with.showAbout,
                  .checkForUpdates = [this] { m_appDelegate.updater()->checkForUpdates(); },
                  .openLibraryWindow = [this] { openLibraryWindow(); },
                  .quit =
                      [this] {
                          quit();
                      }})
{
    connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, this, [this] {
        m_appDelegate.applicationWillTerminate();
        m_with.restoreGuard.programEnds();
    });
}

void QuirevaultApp::start(const QList<PDFOpenRequest> &requests)
{
    startWithoutWindow();
    if (requests.isEmpty())
        return openLibraryWindow();
    for (const PDFOpenRequest &request : requests)
        openReaderWindow(request);
}

void QuirevaultApp::startWithoutWindow()
{
    m_appDelegate.applicationDidFinishLaunching();
    if (!m_appDelegate.updater()->canCheckForUpdates)
        m_commands.checkForUpdates->setToolTip(QStringLiteral("No update service is configured."));
}

void QuirevaultApp::openLibraryWindow()
{
    if (m_libraryWindow.isOpen())
        return m_libraryWindow.bringForward();
    m_libraryWindow = m_with.makeLibraryWindow(*this);
    if (!std::exchange(m_hasRestoredSession, true))
        restoreSession();
}

void QuirevaultApp::restoreSession()
{
    // A reader that was opened before the library window is listed too, as it stands by now.
    QSet<QUuid> open;
    for (auto reader = m_readerWindows.cbegin(); reader != m_readerWindows.cend(); ++reader)
        open.insert(reader.key().id);
    QList<PDFOpenRequest> session = m_with.sessions.activeSessions;
    session.removeIf([&](const PDFOpenRequest &request) { return open.contains(request.id); });
    if (session.isEmpty())
        return;
    if (!m_with.restoreGuard.mustAsk())
        return reopenReaders(session);
    m_with.askToReopen(
        [this, session](bool isWanted) { isWanted ? reopenReaders(session) : forget(session); });
}

void QuirevaultApp::reopenReaders(const QList<PDFOpenRequest> &session)
{
    m_with.restoreGuard.restoring();
    for (const PDFOpenRequest &request : session)
        openReaderWindow(request);
}

void QuirevaultApp::forget(const QList<PDFOpenRequest> &session)
{
    m_with.restoreGuard.allIsWell();
    for (const PDFOpenRequest &request : session)
        m_with.sessions.unregister(request.id);
}

void QuirevaultApp::openReaderWindow(const PDFOpenRequest &request)
{
    m_readerWindows.removeIf([](const auto &entry) { return !entry.value().isOpen(); });
    const auto open = m_readerWindows.constFind(request);
    if (open != m_readerWindows.constEnd())
        return open->bringForward();
    m_readerWindows.insert(request, m_with.makeReaderWindow(request));
}

void QuirevaultApp::openFiles(const QList<QUrl> &files)
{
    for (const QUrl &file : files) {
        if (file.isLocalFile())
            openReaderWindow({.id = QUuid::createUuid(), .url = file});
    }
}

QCoro::Task<> QuirevaultApp::openPaper(QString paperId)
{
    const QPointer self(this);
    const QFuture<Result<std::optional<Paper>>> finding = m_with.findPaper(paperId);
    const Result<std::optional<Paper>> paper = co_await finding;
    if (!self)
        co_return;
    if (paper && *paper) {
        openReaderWindow({.id = QUuid::createUuid(),
                          .url = QUrl::fromLocalFile((*paper)->filepath),
                          .paperId = (*paper)->id});
        co_return;
    }
    openLibraryWindow();
    m_with.showProblem(paper ? QStringLiteral("This paper is no longer in the library.")
                             : paper.error().message());
}

void QuirevaultApp::search(const QString &text)
{
    openLibraryWindow();
    m_with.searchLibrary(text);
}

void QuirevaultApp::reopen()
{
    if (m_appDelegate.applicationShouldHandleReopen(m_libraryWindow.isOpen()))
        openLibraryWindow();
}

bool QuirevaultApp::runCommand(const QString &name)
{
    // The desktop's menu entry for the application has an action of its own name for the main window.
    const QString known = name == u"new-window" ? m_commands.library->objectName() : name;
    auto *command = m_commands.findChild<QAction *>(known, Qt::FindDirectChildrenOnly);
    if (!command)
        return false;
    command->trigger();
    return true;
}

void QuirevaultApp::quit()
{
    m_isQuitting = true;
    // The library window first: it may have a reason to stay, and then the readers stay as well.
    m_isQuitting = !m_libraryWindow.isOpen() || m_libraryWindow.close();
    if (m_isQuitting)
        QCoreApplication::quit();
}
