#pragma once

#include <QObject>
#include <QPixmap>
#include <QString>

/// Cover pictures, decoded on other threads and kept within a limit of bytes. Main thread.
class CoverCache : public QObject
{
    Q_OBJECT

public:
    explicit CoverCache(QObject *parent = nullptr);
    ~CoverCache() override;

    /// The cover in `coverPath`, scaled to fit inside `box` (device pixels). Null when there is none, or not
    /// yet: then it is read, and `arrived` follows. Costs the main thread a look-up.
    QPixmap cover(const QString &coverPath, QSize box);

    /// Whether `filepath` is known to be gone; asked of the disk on another thread, `arrived` follows a
    /// change.
    bool isFileMissing(const QString &filepath);

Q_SIGNALS:
    /// A cover or the state of a file that was asked for can be had now.
    void arrived(const QString &path);
};
