#include "ui/GridMotion.h"

#include "reader/Spring.h"

GridMotion::GridMotion(QObject *parent)
    : QVariantAnimation(parent)
{
    setDuration(int(kSpringSettles.count()));
    setStartValue(0.0);
    setEndValue(1.0);
}

void GridMotion::startFrom(const QHash<QString, QPointF> &places)
{
    stop();
    m_from = places;
    if (!places.isEmpty())
        start();
}

GridMotion::Pose GridMotion::pose(const QString &paperId, QPointF target) const
{
    if (!isMoving())
        return {target};
    const double progress = springProgress(std::chrono::milliseconds(currentTime()));
    const auto from = m_from.constFind(paperId);
    if (from == m_from.constEnd())
        return {target, progress};
    return {*from + (target - *from) * progress};
}
