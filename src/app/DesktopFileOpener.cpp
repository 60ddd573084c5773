#include "app/DesktopFileOpener.h"

#include "platform/SlowWork.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDesktopServices>
#include <QFileInfo>
#include <QFutureWatcher>
#include <QMimeDatabase>
#include <QProcess>
#include <QStandardPaths>
#include <QtConcurrentRun>
#include <algorithm>

namespace
{
constexpr int kMissing = 1;
constexpr int kNoProgram = 2;

Error problem(int code, const QString &what, const QString &path)
{
    return {QStringLiteral("FileOpener"), code, what, path};
}

Error missing(const QString &path)
{
    return problem(kMissing, QStringLiteral("The file is no longer there"), path);
}

QDBusMessage showItems(const QString &path)
{
    auto message = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("/org/freedesktop/FileManager1"),
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
    // The second argument is a start-up notification id, which there is none of.
    message << QStringList{QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded)} << QString();
    return message;
}

/// The desktop's way to start a program by its name on the bus, or to reach it where it runs.
QDBusMessage openOnBus(const DesktopEntry &viewer, const QString &path)
{
    const QString name = viewer.id.chopped(QStringLiteral(".desktop").size());
    const QString object = u'/' + QString(name).replace(u'.', u'/').replace(u'-', u'_');
    auto message = QDBusMessage::createMethodCall(name, object, QStringLiteral("org.freedesktop.Application"),
                                                  QStringLiteral("Open"));
    message << QStringList{QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded)} << QVariantMap();
    return message;
}

/// Whether the program could hand the file back to this one: it is this one, under whatever id the user has
/// registered it, or it opens what the desktop prefers, which may be this one.
bool leadsBack(const DesktopEntry &entry)
{
    static const QStringList openers{
        QStringLiteral("xdg-open"),   QStringLiteral("gio"),         QStringLiteral("gvfs-open"),
        QStringLiteral("kde-open"),   QStringLiteral("kde-open5"),   QStringLiteral("kioclient"),
        QStringLiteral("kioclient5"), QStringLiteral("exo-open"),    QStringLiteral("gnome-open"),
        QStringLiteral("mimeopen"),   QStringLiteral("run-mailcap"), QStringLiteral("dde-open"),
        QStringLiteral("see")};
    const auto isUs = [](const QString &text) {
        return text.contains(u"quirevault", Qt::CaseInsensitive);
    };
    const QStringList words = entry.commandWords();
    const QString program = QStandardPaths::findExecutable(words.value(0));
    return isUs(entry.id) || isUs(QFileInfo(QFileInfo(program).canonicalFilePath()).fileName()) ||
           std::any_of(words.begin(), words.end(), [&](const QString &word) {
               return isUs(word) || openers.contains(QFileInfo(word).fileName());
           });
}

QString typeByName(const QString &path)
{
    return QMimeDatabase().mimeTypeForFile(path, QMimeDatabase::MatchExtension).name();
}

QList<DesktopEntry> otherViewers(const QString &path, const QString &fileType, const DesktopFolders &folders)
{
    QList<DesktopEntry> viewers = applicationsFor(fileType.isEmpty() ? typeByName(path) : fileType, folders);
    // One for a terminal would start without any.
    viewers.removeIf([](const DesktopEntry &entry) { return entry.needsTerminal || leadsBack(entry); });
    return viewers;
}

bool startDetached(const ProgramCall &call)
{
    QProcess process;
    process.setProgram(call.program);
    process.setArguments(call.arguments);
    process.setWorkingDirectory(call.workingFolder);
    // What it says is nothing that this program said.
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    return process.startDetached();
}
} // namespace

DesktopFileOpener::DesktopFileOpener(Desktop desktop)
    : m_desktop(std::move(desktop))
{
}

DesktopFileOpener::Desktop DesktopFileOpener::Desktop::ofTheUser()
{
    return {.bus = &QDBusConnection::sessionBus,
            .openFolder = &QDesktopServices::openUrl,
            .start = &startDetached,
            .folders = DesktopFolders::ofTheUser()};
}

DesktopFileOpener &DesktopFileOpener::shared()
{
    static DesktopFileOpener opener(Desktop::ofTheUser());
    return opener;
}

void DesktopFileOpener::open(const QString &path, Done done)
{
    using Viewers = std::optional<QList<DesktopEntry>>; // nothing: there is no such file
    const QString absolute = QFileInfo(path).absoluteFilePath();
    ask<Viewers>(
        [absolute, type = m_desktop.fileType, folders = m_desktop.folders] {
            return QFileInfo::exists(absolute) ? Viewers(otherViewers(absolute, type, folders))
                                               : std::nullopt;
        },
        [this, absolute, done](const Viewers &viewers) {
            viewers ? openWith(*viewers, absolute, done) : done(missing(absolute));
        });
}

void DesktopFileOpener::openWith(QList<DesktopEntry> viewers, const QString &path, const Done &done)
{
    if (viewers.isEmpty())
        return done(problem(kNoProgram, QStringLiteral("The desktop has no other program to open"), path));
    const DesktopEntry viewer = viewers.takeFirst();
    const auto startIt = [this, viewer, viewers, path, done] {
        const std::optional<ProgramCall> call = viewer.callFor(path);
        call &&m_desktop.start(*call) ? done(std::nullopt) : openWith(viewers, path, done);
    };
    if (!viewer.isDBusActivatable)
        return startIt();
    auto *watcher = new QDBusPendingCallWatcher(m_desktop.bus().asyncCall(openOnBus(viewer, path)), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [watcher, startIt, done] {
        watcher->deleteLater();
        watcher->isError() ? startIt() : done(std::nullopt);
    });
}

void DesktopFileOpener::showInFolder(const QString &path, Done done)
{
    const auto openFolder = [this, path, done] {
        if (m_desktop.openFolder(QUrl::fromLocalFile(QFileInfo(path).absolutePath())))
            done(std::nullopt);
        else
            done(problem(kNoProgram, QStringLiteral("The desktop has no program to open the folder of"),
                         path));
    };
    ask<bool>([path] { return QFileInfo::exists(path); },
              [this, path, done, openFolder](bool isThere) {
                  if (!isThere)
                      return done(missing(path));
                  auto *watcher =
                      new QDBusPendingCallWatcher(m_desktop.bus().asyncCall(showItems(path)), this);
                  connect(watcher, &QDBusPendingCallWatcher::finished, this, [watcher, done, openFolder] {
                      watcher->deleteLater();
                      watcher->isError() ? openFolder() : done(std::nullopt);
                  });
              });
}

template <typename Answer>
void DesktopFileOpener::ask(std::function<Answer()> question, std::function<void(const Answer &answer)> go)
{
    // A watcher, not QFuture::then() with a context, which must not be destroyed before the answer comes.
    auto *watcher = new QFutureWatcher<Answer>(this);
    connect(watcher, &QFutureWatcherBase::finished, this, [watcher, go = std::move(go)] {
        watcher->deleteLater();
        go(watcher->result());
    });
    watcher->setFuture(QtConcurrent::run(slowWork(), std::move(question)));
}
