#pragma once

#include "app/FileOpener.h"

#include <QObject>
#include <QUrl>

class QDBusConnection;

/// Opens files as the desktop's settings say. No path passes through a shell: a path is a D-Bus argument or a
/// percent-encoded URL.
///
/// Fails with domain "FileOpener" code 1 when the file is missing (asked of the disk on another thread, since
/// a network share may not answer), 2 when no program takes it. `done` is not called once the opener is gone.
class DesktopFileOpener : public QObject, public FileOpener
{
public:
    /// Opens `url` in the program that the desktop has for it; false when there is none.
    using OpenUrl = std::function<bool(const QUrl &url)>;
    /// Gives the bus of the file manager; asked when it is first needed, since connecting takes time.
    using Bus = std::function<QDBusConnection()>;

    DesktopFileOpener(Bus bus, OpenUrl openUrl);
    /// On the session's bus, with Qt's services of the desktop. Made at the first call.
    static DesktopFileOpener &shared();

    void open(const QString &path, Done done) override;
    /// Asks the file manager to select the file; where none can, opens the folder.
    void showInFolder(const QString &path, Done done) override;

private:
    void whenItExists(const QString &path, Done failed, std::function<void()> go);
    void openInDefault(const QUrl &url, const QString &path, const Done &done);

    Bus m_bus;
    OpenUrl m_openUrl;
};
