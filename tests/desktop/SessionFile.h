#pragma once

#include <QEventLoop>
#include <QFile>
#include <QFileSystemWatcher>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <functional>

/// The file in which a running program notes its reader windows, as seen from outside.
class SessionFile
{
public:
    /// The folder must exist.
    explicit SessionFile(const QString &path)
        : m_path(path)
    {
    }

    QJsonArray requests() const
    {
        QFile file(m_path);
        return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).array()
                                              : QJsonArray();
    }

    void write(const QJsonArray &requests) const
    {
        QFile file(m_path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(QJsonDocument(requests).toJson());
    }

    /// Waits until the file holds one request that `isAwaited`; answers that.
    QJsonObject await(const std::function<bool(const QJsonObject &request)> &isAwaited) const
    {
        // The folder tells when the file appears, the file when it is written in place.
        QFileSystemWatcher watcher({m_path.left(m_path.lastIndexOf(u'/'))});
        QEventLoop loop;
        QJsonObject awaited; // as it was seen: the program may write the file anew at any time
        const auto look = [&] {
            if (watcher.files().isEmpty() && QFile::exists(m_path))
                watcher.addPath(m_path);
            const QJsonArray found = requests();
            if (found.size() != 1 || !isAwaited(found[0].toObject()))
                return false;
            awaited = found[0].toObject();
            loop.quit();
            return true;
        };
        QObject::connect(&watcher, &QFileSystemWatcher::directoryChanged, look);
        QObject::connect(&watcher, &QFileSystemWatcher::fileChanged, look);
        if (!look())
            loop.exec();
        return awaited;
    }

private:
    QString m_path;
};
