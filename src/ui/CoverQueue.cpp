#include "ui/CoverQueue.h"

#include "platform/Paths.h"

#include <QDateTime>
#include <QFileInfo>
#include <QImageReader>
#include <QMutexLocker>
#include <algorithm>

namespace
{
/// Where the cover is: a library that was moved to another home folder still names the place of before.
QString placeOf(const QString &path)
{
    return QFileInfo::exists(path) ? path : coversFolder() + u'/' + QFileInfo(path).fileName();
}

QImage readCover(const QString &path, QSize box)
{
    QImageReader reader(path);
    reader.setAutoTransform(true);
    const QSize size = reader.size();
    if (!size.isValid())
        return {};
    reader.setScaledSize(size.scaled(box, Qt::KeepAspectRatio).expandedTo({1, 1}));
    const QImage cover = reader.read();
    // The formats that pixmaps have: the main thread then only takes it over.
    return cover.convertToFormat(cover.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied
                                                         : QImage::Format_RGB32);
}
} // namespace

size_t qHash(const CoverQuestion &question, size_t seed)
{
    return qHashMulti(seed, question.path, question.box.width(), question.box.height());
}

CoverAnswer answerFromDisk(const CoverQuestion &question, qint64 knownModified)
{
    const QFileInfo file(question.box.isEmpty() ? question.path : placeOf(question.path));
    CoverAnswer answer;
    answer.question = question;
    if (file.isFile())
        answer.modified = file.lastModified().toMSecsSinceEpoch();
    if (question.box.isEmpty())
        return answer;
    if (answer.modified == 0)
        answer.image = QImage();
    else if (answer.modified != knownModified)
        answer.image = readCover(file.filePath(), question.box);
    return answer;
}

bool CoverQueue::ask(const Waiting &waiting)
{
    const QMutexLocker lock(&m_mutex);
    Place &place = m_places[waiting.question];
    const bool isNew = place.turn == 0;
    place.waiting = waiting;
    place.turn = ++m_turn;
    if (m_places.size() > kMostWaiting)
        forgetOldest();
    return isNew;
}

std::optional<CoverQueue::Waiting> CoverQueue::takeNewest()
{
    const QMutexLocker lock(&m_mutex);
    Place *newest = nullptr;
    for (Place &place : m_places) {
        if (!place.isTaken && (!newest || place.turn > newest->turn))
            newest = &place;
    }
    if (!newest)
        return std::nullopt;
    newest->isTaken = true;
    return newest->waiting;
}

bool CoverQueue::settle(const CoverQuestion &question, int round)
{
    const QMutexLocker lock(&m_mutex);
    const auto place = m_places.find(question);
    if (place == m_places.end())
        return false;
    if (place->waiting.round == round) {
        m_places.erase(place);
        return false;
    }
    place->isTaken = false;
    return true;
}

void CoverQueue::clear()
{
    const QMutexLocker lock(&m_mutex);
    m_places.clear();
}

void CoverQueue::forgetOldest()
{
    const auto oldest = std::min_element(m_places.begin(), m_places.end(),
                                         [](const Place &a, const Place &b) { return a.turn < b.turn; });
    m_places.erase(oldest);
}
