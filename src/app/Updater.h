#pragma once

#include "app/UpdateSchedule.h"
#include "app/UpdateSettings.h"
#include "base/Result.h"
#include "updates/AppcastItem.h"
#include "updates/InstalledProgram.h"
#include "updates/UpdateTransfers.h"

#include <QFutureWatcher>
#include <QObject>
#include <QProperty>
#include <QThreadPool>
#include <atomic>
#include <functional>
#include <stop_token>

class Clock;
class FileOpener;
class HttpClient;
class Preferences;

/// How far the updater has come.
enum class UpdatePhase {
    Idle,
    NotConfigured, ///< somebody asked, but there is no address to look at
    Checking,
    UpToDate,
    Available,   ///< `update()` may be downloaded
    Downloading, ///< `receivedBytes` tells how far
    Downloaded,  ///< the package lies at `packagePath()`, signed as it has to be
    Failed,      ///< `problem` says why; `hasDownloadFailed()`, what did
};

/// Looks for newer versions of the program, once a day and when asked, and downloads the package of one.
/// Installing it is left to the person: what a package manager put there, it alone replaces. The network is
/// waited for on a thread of its own. Main thread.
class Updater : public QObject
{
    Q_OBJECT

public:
    /// Whether a person waits for what the window will show, or it comes unasked and may not take the focus.
    enum class Attention { Asked, Unasked };

    /// All must outlive the updater.
    struct Collaborators {
        HttpClient &http;
        Preferences &preferences;
        const Clock &clock;
        FileOpener &opener;
        InstalledProgram program;
        QString builtInFeed; ///< the feed's address unless the preferences name one
        QString folder;      ///< for packages
        UpdateTimeouts timeouts;
        /// Shows the window that follows `phase`, or brings it forward.
        std::function<void(Updater &updater, Attention attention)> showWindow;
    };

    /// Starts looking every day.
    explicit Updater(Collaborators collaborators);
    /// Stops what runs, which takes a second or so, and longer while a large package is being verified.
    ~Updater() override;

    /// Whether a check may start now: not without a feed's address, nor during a check or a download.
    QProperty<bool> canCheckForUpdates;
    QProperty<UpdatePhase> phase;
    QProperty<qint64> receivedBytes;
    /// For people; after a failure, or when the package could not be opened or shown. Empty otherwise.
    QProperty<QString> problem;

    /// Shows the window, and in it what a check comes to, unless there is something to decide already.
    void checkForUpdates();
    /// The same unasked: only a new version is shown, unless it is to be skipped. Failures go to the log.
    void checkInBackground();

    void download(); ///< the version that is available
    void skip();     ///< does not offer it unasked again
    /// What the window showed was seen, and another time will do; stops a check. A download goes on.
    void dismiss();
    /// Stops the check or the download.
    void cancel();
    /// Does again what failed.
    void tryAgain();

    void openPackage();
    void showPackageInFolder();

    const AppcastItem &update() const { return m_update; }
    const DottedVersion &installedVersion() const { return m_with.program.version; }
    const QString &packagePath() const { return m_packagePath; }
    bool hasDownloadFailed() const { return m_hasDownloadFailed; } ///< and not the check
    UpdateSettings &settings() { return m_settings; }

private:
    using Found = Result<std::optional<AppcastItem>>;

    void startCheck();
    void checkEnded(const Found &found);
    void offer(const AppcastItem &update);
    void downloadEnded(const Result<QString> &path);
    /// Passes on how many bytes have arrived, from the worker; what the main thread has no time for is left
    /// out. The one that a future carries loses the last news before a pause.
    void tell(qint64 bytes);
    void enter(UpdatePhase newPhase, const QString &newProblem = {});
    std::function<void(const std::optional<Error> &)> sayProblem();

    Collaborators m_with;
    UpdateSettings m_settings;
    bool m_isAsked = false; ///< whether a person waits for the check
    AppcastItem m_update;
    QString m_packagePath;
    bool m_hasDownloadFailed = false;
    std::stop_source m_stop;         ///< of what runs
    std::atomic<qint64> m_news = -1; ///< how many bytes have arrived, until the main thread heard; else -1
    QFutureWatcher<Found> m_check;
    QFutureWatcher<Result<QString>> m_download;
    QThreadPool m_worker;
    UpdateSchedule m_schedule;
};
