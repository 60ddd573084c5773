#pragma once

#include <QHash>
#include <QImage>
#include <QMutex>
#include <QSize>
#include <QString>
#include <optional>

/// What the cover cache asks the disk.
struct CoverQuestion {
    QString path;
    QSize box; ///< to fit the picture into, in pixels; empty to ask only whether the file is there

    friend bool operator==(const CoverQuestion &, const CoverQuestion &) = default;
};

size_t qHash(const CoverQuestion &question, size_t seed = 0);

/// What the disk answered.
struct CoverAnswer {
    CoverQuestion question;
    int round = 0;
    qint64 modified = 0;         ///< of the file, in ms since 1970; 0 when it is not there
    std::optional<QImage> image; ///< absent when the file is as it was; null when it holds no picture
};

/// Reads the file. `knownModified` is when the picture that is already had was made, or 0. Blocks.
CoverAnswer answerFromDisk(const CoverQuestion &question, qint64 knownModified);

/// Questions that wait for a worker. Call from any thread.
class CoverQueue
{
public:
    /// A cover and a file for each of the 160 cards of a 4K screen at 100 %, and some.
    static constexpr qsizetype kMostWaiting = 384;

    struct Waiting {
        CoverQuestion question;
        qint64 knownModified = 0;
        int round = 0;
    };

    /// Puts the question first, also when it waits or is being answered already. True when a worker has to
    /// be started for it.
    bool ask(const Waiting &waiting);
    /// The question that was asked last, which counts as being answered until `settle`; none when all were
    /// taken or forgotten.
    std::optional<Waiting> takeNewest();
    /// Ends a question that was answered for `round`. True when it was asked again for a later one meanwhile:
    /// then it waits anew, and a worker has to be started for it.
    bool settle(const CoverQuestion &question, int round);
    void clear();

private:
    struct Place {
        Waiting waiting;
        quint64 turn = 0; ///< the greater, the later it was asked
        bool isTaken = false;
    };

    void forgetOldest();

    QMutex m_mutex;
    QHash<CoverQuestion, Place> m_places;
    quint64 m_turn = 0;
};
