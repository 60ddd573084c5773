#pragma once

#include <QList>
#include <QPointF>

/// Finds the nearest of many points without looking at all of them.
class NearestPoint
{
public:
    explicit NearestPoint(const QList<QPointF> &points);

    struct Found {
        qsizetype index = -1; ///< into the points given; -1 when there are none within reach
        double distance = 0;
    };
    /// The point nearest to `place` that is less than `reach` away; of several as near, the first.
    Found nearestTo(QPointF place, double reach) const;

private:
    /// The points from `begin` up to `end` become a tree: the middle one divides the others, across and along
    /// in turn.
    void arrange(qsizetype begin, qsizetype end, bool isAcross);
    void search(qsizetype begin, qsizetype end, bool isAcross, QPointF place, Found &best) const;

    QList<QPointF> m_points;
    QList<qsizetype> m_order; ///< indexes of the points, as the tree wants them
};
