#include "app/DesktopFileOpener.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDesktopServices>
#include <QFileInfo>
#include <QtConcurrentRun>

namespace
{
constexpr int kMissing = 1;
constexpr int kNoProgram = 2;

Error problem(int code, const QString &what, const QString &path)
{
    return {QStringLiteral("FileOpener"), code, what, path};
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
} // namespace

DesktopFileOpener::DesktopFileOpener(Bus bus, OpenUrl openUrl)
    : m_bus(std::move(bus))
    , m_openUrl(std::move(openUrl))
{
}

DesktopFileOpener &DesktopFileOpener::shared()
{
    static DesktopFileOpener opener(&QDBusConnection::sessionBus, &QDesktopServices::openUrl);
    return opener;
}

void DesktopFileOpener::open(const QString &path, Done done)
{
    whenItExists(path, done, [this, path, done] { openInDefault(QUrl::fromLocalFile(path), path, done); });
}

void DesktopFileOpener::showInFolder(const QString &path, Done done)
{
    whenItExists(path, done, [this, path, done] {
        auto *watcher = new QDBusPendingCallWatcher(m_bus().asyncCall(showItems(path)), this);
        connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, path, done, watcher] {
            watcher->deleteLater();
            if (!watcher->isError())
                return done(std::nullopt);
            openInDefault(QUrl::fromLocalFile(QFileInfo(path).path()), path, done);
        });
    });
}

void DesktopFileOpener::whenItExists(const QString &path, Done failed, std::function<void()> go)
{
    QtConcurrent::run([path] {
        return QFileInfo::exists(path);
    }).then(this, [path, failed = std::move(failed), go = std::move(go)](bool exists) {
        if (exists)
            go();
        else
            failed(problem(kMissing, QStringLiteral("The file is no longer there"), path));
    });
}

void DesktopFileOpener::openInDefault(const QUrl &url, const QString &path, const Done &done)
{
    if (m_openUrl(url))
        done(std::nullopt);
    else
        done(problem(kNoProgram, QStringLiteral("The desktop has no program to open"), path));
}
