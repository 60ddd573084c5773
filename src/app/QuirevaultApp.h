#pragma once

#include "app/AppDelegate.h"
#include "app/LibraryCommands.h"
#include "app/OpenedWindow.h"
#include "base/Result.h"
#include "reader/PDFOpenRequest.h"
#include "store/Paper.h"

#include <QFuture>
#include <QHash>
#include <QList>
#include <QObject>
#include <QUrl>
#include <functional>
#include <optional>
#include <qcorotask.h>

class RestoreGuard;
class SessionManager;

/// The application: its delegate, its commands and its two kinds of window, which it opens without knowing
/// how they are made. Main thread.
class QuirevaultApp : public QObject
{
    Q_OBJECT

public:
    /// What the main program supplies. Windows are shown as soon as they are made.
    struct Collaborators {
        SessionManager &sessions; ///< must outlive the application, as the guard must
        RestoreGuard &restoreGuard;
        std::function<OpenedWindow(QuirevaultApp &app)> makeLibraryWindow;
        std::function<OpenedWindow(const PDFOpenRequest &request)> makeReaderWindow;
        /// Asks the person whether to open the papers of the last session again, though they may have ended
        /// the program; the answer may come later or never.
        std::function<void(std::function<void(bool reopen)> answer)> askToReopen;
        std::function<void()> showAbout;
        Updater::Collaborators updates;
        /// Looks a paper of the library up by its id; needed by `openPaper` alone, as what follows.
        std::function<QFuture<Result<std::optional<Paper>>>(const QString &id)> findPaper = {};
        /// Puts `text` into the library window's search field; called when the window is open.
        std::function<void(const QString &text)> searchLibrary = {};
        /// Tells the person in the library window what went wrong.
        std::function<void(const QString &message)> showProblem = {};
    };
    explicit QuirevaultApp(Collaborators collaborators);

    LibraryCommands &commands() { return m_commands; }
    AppDelegate &appDelegate() { return m_appDelegate; }

    /// Finishes launching and opens reader windows for `requests`, or else the library window: who asks for a
    /// paper gets the paper.
    void start(const QList<PDFOpenRequest> &requests = {});
    /// Finishes launching and opens nothing: somebody is about to ask for a window.
    void startWithoutWindow();
    /// Shows the one library window, which may have been closed. The first time, the reader windows that
    /// were open at the end of the last session open again; when that went badly twice, only if the person
    /// wants it.
    void openLibraryWindow();
    /// Shows the one reader window of this value.
    void openReaderWindow(const PDFOpenRequest &request);
    /// Opens each file in a reader window; addresses of anything but files are left out.
    void openFiles(const QList<QUrl> &files);
    /// Opens the paper of that id in a reader window; of one that the library does not have it says so in the
    /// library window.
    QCoro::Task<> openPaper(QString paperId);
    /// Shows the library window with a search for `text`.
    void search(const QString &text);
    /// What another start of the program asks for.
    void reopen();
    /// Runs the command of that object name; false when there is none.
    bool runCommand(const QString &name);

    /// Ends the program, unless the library window stays open because the person wants it to. Reader windows
    /// that are open come back at the next start.
    void quit();
    /// Whether windows are being closed because the program ends, which a reader window must not take for
    /// the person's wish to close it.
    bool isQuitting() const { return m_isQuitting; }

private:
    void restoreSession();
    void reopenReaders(const QList<PDFOpenRequest> &session);
    void forget(const QList<PDFOpenRequest> &session);

    Collaborators m_with;
    AppDelegate m_appDelegate;
    LibraryCommands m_commands;
    OpenedWindow m_libraryWindow;
    QHash<PDFOpenRequest, OpenedWindow> m_readerWindows;
    bool m_hasRestoredSession = false;
    bool m_isQuitting = false;
};
