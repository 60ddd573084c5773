#pragma once

#include <QList>
#include <QObject>
#include <QStringList>

/// Reads the sizes of files on another thread, in batches: those asked for in one turn of the event loop.
/// Main thread.
class FileSizes : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    void request(int key, const QString &path);

Q_SIGNALS:
    /// The size of the file asked for under `key`, in bytes; negative when it cannot be told.
    void arrived(int key, qint64 bytes);

private:
    void readBatch();

    QList<std::pair<int, QString>> m_batch;
};
