#pragma once

#include "ui/CoverQueue.h"

#include <QCache>
#include <QObject>
#include <QPixmap>
#include <QString>
#include <QThreadPool>

/// Cover pictures, decoded on other threads and kept within a limit of bytes. Main thread.
///
/// What was asked last is read first; of questions that pile up the oldest are forgotten, since what they
/// were for has scrolled away. Whoever still shows it asks again when it next paints.
class CoverCache : public QObject
{
    Q_OBJECT

public:
    /// Bytes of pictures kept: the 160 covers of an 8K screen full of cards at 200 %. With fewer than a
    /// screenful they would push each other out and be read without end.
    static constexpr qsizetype kPictureBytes = 100 * 1024 * 1024;
    /// Files whose state is kept; a few bytes each.
    static constexpr int kMostFiles = 4096;

    explicit CoverCache(QObject *parent = nullptr);
    /// Waits for the covers that are being read this moment.
    ~CoverCache() override;

    /// The cover in `coverPath`, scaled to fit inside `box` (device pixels). Null when there is none, or not
    /// yet: then it is read, and `arrived` follows. Costs the main thread a look-up.
    QPixmap cover(const QString &coverPath, QSize box);

    /// Whether `filepath` is known to be gone; asked of the disk on another thread, `arrived` follows a
    /// change.
    bool isFileMissing(const QString &filepath);

    /// Asks the disk again, about each file when it is next shown: covers and papers may have come or gone.
    /// Until the answer is there the old one stands.
    void recheck() { ++m_round; }

Q_SIGNALS:
    /// A cover or the state of a file that was asked for can be had now.
    void arrived(const QString &path);

private:
    struct Entry {
        QPixmap picture;
        qint64 modified = 0; ///< of the file, in ms since 1970; 0 when it is not there
        int round = 0;       ///< in which this was found out
    };

    Entry *entry(QCache<CoverQuestion, Entry> &cache, const CoverQuestion &question);
    void answerNewest();
    void take(const CoverAnswer &answer);
    void takePicture(const CoverAnswer &answer);
    void takeFile(const CoverAnswer &answer);

    int m_round = 1;
    QCache<CoverQuestion, Entry> m_pictures;
    QCache<CoverQuestion, Entry> m_files;
    CoverQueue m_queue;
    QThreadPool m_workers;
};
