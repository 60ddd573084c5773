#pragma once

#include "app/FileOpener.h"
#include "platform/MimeApplications.h"

#include <QObject>
#include <QUrl>

class QDBusConnection;

/// Opens files as the desktop's settings say: a PDF in the program that the user prefers for PDFs, of those
/// that are not this one, which the user may have made the default. No path passes through a shell: it is a
/// D-Bus argument, a percent-encoded URL or an argument of its own that begins with a slash.
///
/// Fails with domain "FileOpener" code 1 when the file is missing (asked of the disk on another thread, since
/// a network share may not answer), 2 when no program takes it. `done` is not called once the opener is gone.
class DesktopFileOpener : public QObject, public FileOpener
{
public:
    /// What the opener needs of the desktop.
    struct Desktop {
        /// Gives the session's bus; asked when it is first needed, since connecting takes time.
        std::function<QDBusConnection()> bus;
        /// Opens the folder `url` in the program that the desktop has for it; false when there is none.
        std::function<bool(const QUrl &url)> openFolder;
        /// Starts a program that goes on when this one ends; false when it cannot be started.
        std::function<bool(const ProgramCall &call)> start;
        DesktopFolders folders;
        /// Of the files that it opens, a MIME type; empty for what their names tell.
        QString fileType = QStringLiteral("application/pdf");

        /// The session's bus, and what Qt and the user's settings give.
        static Desktop ofTheUser();
    };

    explicit DesktopFileOpener(Desktop desktop);
    /// Opens PDFs on the user's desktop. Made at the first call.
    static DesktopFileOpener &shared();

    /// Opens the file in another program for files of the type.
    void open(const QString &path, Done done) override;
    /// Asks the file manager to select the file; where none can, opens the folder.
    void showInFolder(const QString &path, Done done) override;

private:
    /// Asks `question` on another thread and gives `go` the answer.
    template <typename Answer>
    void ask(std::function<Answer()> question, std::function<void(const Answer &answer)> go);
    /// Tries the first viewer, and the others when it does not start.
    void openWith(QList<DesktopEntry> viewers, const QString &path, const Done &done);

    Desktop m_desktop;
};
