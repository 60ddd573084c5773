#include "ui/CoverCache.h"

#include <QMetaObject>

CoverCache::CoverCache(QObject *parent)
    : QObject(parent)
    , m_pictures(kPictureBytes)
    , m_files(kMostFiles)
{
    m_workers.setMaxThreadCount(2);
    m_workers.setThreadPriority(QThread::LowPriority);
}

CoverCache::~CoverCache()
{
    m_queue.clear();
    m_workers.clear();
    m_workers.waitForDone();
}

QPixmap CoverCache::cover(const QString &coverPath, QSize box)
{
    if (coverPath.isEmpty() || box.isEmpty())
        return {};
    const Entry *known = entry(m_pictures, {coverPath, box});
    return known ? known->picture : QPixmap();
}

bool CoverCache::isFileMissing(const QString &filepath)
{
    const Entry *known = entry(m_files, {filepath, {}});
    return known && known->modified == 0;
}

CoverCache::Entry *CoverCache::entry(QCache<CoverQuestion, Entry> &cache, const CoverQuestion &question)
{
    Entry *known = cache.object(question);
    const bool isStale = !known || known->round != m_round;
    if (isStale && m_queue.ask({question, known ? known->modified : 0, m_round}))
        m_workers.start([this] { answerNewest(); });
    return known;
}

void CoverCache::answerNewest()
{
    const auto waiting = m_queue.takeNewest();
    if (!waiting)
        return;
    CoverAnswer answer = answerFromDisk(waiting->question, waiting->knownModified);
    answer.round = waiting->round;
    QMetaObject::invokeMethod(
        this, [this, answer] { take(answer); }, Qt::QueuedConnection);
}

void CoverCache::take(const CoverAnswer &answer)
{
    if (m_queue.settle(answer.question, answer.round))
        m_workers.start([this] { answerNewest(); });
    if (answer.question.box.isEmpty())
        takeFile(answer);
    else
        takePicture(answer);
}

void CoverCache::takePicture(const CoverAnswer &answer)
{
    Entry *known = m_pictures.object(answer.question);
    if (!answer.image) {
        if (known)
            known->round = answer.round;
        return;
    }
    const bool changes = !answer.image->isNull() || (known && !known->picture.isNull());
    const qsizetype bytes = std::max<qsizetype>(1, answer.image->sizeInBytes());
    m_pictures.insert(answer.question,
                      new Entry{QPixmap::fromImage(*answer.image), answer.modified, answer.round}, bytes);
    if (changes)
        Q_EMIT arrived(answer.question.path);
}

void CoverCache::takeFile(const CoverAnswer &answer)
{
    const Entry *known = m_files.object(answer.question);
    const bool wasMissing = known && known->modified == 0;
    m_files.insert(answer.question, new Entry{{}, answer.modified, answer.round});
    if (wasMissing != (answer.modified == 0))
        Q_EMIT arrived(answer.question.path);
}
