#include "app/Updater.h"

#include "app/FileOpener.h"
#include "base/Clock.h"
#include "base/Log.h"
#include "updates/PackageDownload.h"
#include "updates/UpdateCheck.h"

#include <QPointer>
#include <QtConcurrent>
#include <utility>

namespace
{
constexpr qint64 kNoNews = -1;

bool isBusy(UpdatePhase phase)
{
    return phase == UpdatePhase::Checking || phase == UpdatePhase::Downloading;
}
} // namespace

Updater::Updater(Collaborators collaborators)
    : m_with(std::move(collaborators))
    , m_settings(m_with.preferences, m_with.builtInFeed)
    , m_schedule(m_settings, m_with.clock, [this] { checkInBackground(); })
{
    m_worker.setMaxThreadCount(1);
    connect(&m_check, &QFutureWatcherBase::finished, this, [this] { checkEnded(m_check.result()); });
    connect(&m_download, &QFutureWatcherBase::finished, this, [this] { downloadEnded(m_download.result()); });
    enter(UpdatePhase::Idle);
}

Updater::~Updater()
{
    m_stop.request_stop();
}

void Updater::enter(UpdatePhase newPhase, const QString &newProblem)
{
    canCheckForUpdates = !isBusy(newPhase) && m_settings.feedAddress().has_value();
    problem = newProblem;
    phase = newPhase;
}

void Updater::checkForUpdates()
{
    m_isAsked = true;
    switch (phase) {
    case UpdatePhase::Checking:
    case UpdatePhase::Available:
    case UpdatePhase::Downloading:
    case UpdatePhase::Downloaded:
        break;
    default:
        startCheck();
    }
    m_with.showWindow(*this, Attention::Asked);
}

void Updater::checkInBackground()
{
    if (phase != UpdatePhase::Idle || !m_settings.feedAddress())
        return;
    m_isAsked = false;
    startCheck();
}

void Updater::startCheck()
{
    const std::optional<QUrl> feed = m_settings.feedAddress();
    if (!feed)
        return enter(UpdatePhase::NotConfigured);
    m_hasDownloadFailed = false;
    m_stop = {};
    // Whatever comes of it: a server in trouble is not helped by programs that ask more often.
    m_settings.setLastCheck(m_with.clock.now());
    enter(UpdatePhase::Checking);
    m_check.setFuture(QtConcurrent::run(
        &m_worker,
        [&http = m_with.http, program = m_with.program, timeouts = m_with.timeouts, address = *feed,
         stop = m_stop.get_token()] { return findUpdate(http, address, program, timeouts, stop); }));
}

void Updater::checkEnded(const Found &found)
{
    if (m_stop.stop_requested() && !m_isAsked)
        return enter(UpdatePhase::Idle); // also when the answer was on its way already
    if (!found && isCancelled(found.error()))
        return startCheck(); // asked again before it had stopped
    if (found && *found)
        return offer(**found);
    if (m_isAsked)
        return found ? enter(UpdatePhase::UpToDate) : enter(UpdatePhase::Failed, found.error().message());
    if (!found)
        logLine(u"Updater: Check failed: " + found.error().message());
    enter(UpdatePhase::Idle);
}

void Updater::offer(const AppcastItem &update)
{
    const std::optional<DottedVersion> skipped = m_settings.skippedVersion();
    if (!m_isAsked && skipped && update.version <= *skipped)
        return enter(UpdatePhase::Idle);
    m_update = update;
    enter(UpdatePhase::Available);
    m_with.showWindow(*this, m_isAsked ? Attention::Asked : Attention::Unasked);
}

void Updater::download()
{
    if (isBusy(phase) || !m_with.program.key)
        return;
    m_hasDownloadFailed = false;
    m_stop = {};
    receivedBytes = 0;
    enter(UpdatePhase::Downloading);
    const PackageDownload download{.http = m_with.http,
                                   .key = *m_with.program.key,
                                   .folder = m_with.folder,
                                   .timeouts = m_with.timeouts};
    m_download.setFuture(
        QtConcurrent::run(&m_worker, [this, download, update = m_update, stop = m_stop.get_token()] {
            return download.run(
                update, [this](qint64 bytes) { tell(bytes); }, stop);
        }));
}

void Updater::tell(qint64 bytes)
{
    if (m_news.exchange(bytes) == kNoNews)
        QMetaObject::invokeMethod(
            this, [this] { receivedBytes = m_news.exchange(kNoNews); }, Qt::QueuedConnection);
}

void Updater::downloadEnded(const Result<QString> &path)
{
    if (!path && isCancelled(path.error()))
        return enter(UpdatePhase::Available);
    m_hasDownloadFailed = !path;
    m_packagePath = path.value_or(QString());
    enter(path ? UpdatePhase::Downloaded : UpdatePhase::Failed, path ? QString() : path.error().message());
    // Who started it may have closed the window meanwhile.
    m_with.showWindow(*this, Attention::Unasked);
}

void Updater::skip()
{
    m_settings.setSkippedVersion(m_update.version);
    dismiss();
}

void Updater::dismiss()
{
    if (phase == UpdatePhase::Checking && m_isAsked)
        return cancel();
    if (!isBusy(phase))
        enter(UpdatePhase::Idle);
}

void Updater::cancel()
{
    m_isAsked = false;
    m_stop.request_stop();
}

void Updater::tryAgain()
{
    if (phase != UpdatePhase::Failed)
        return;
    if (m_hasDownloadFailed)
        download();
    else
        checkForUpdates();
}

std::function<void(const std::optional<Error> &)> Updater::sayProblem()
{
    return [self = QPointer(this)](const std::optional<Error> &error) {
        if (self && self->phase == UpdatePhase::Downloaded)
            self->problem = error ? error->message() : QString();
    };
}

void Updater::openPackage()
{
    m_with.opener.open(m_packagePath, sayProblem());
}

void Updater::showPackageInFolder()
{
    m_with.opener.showInFolder(m_packagePath, sayProblem());
}
