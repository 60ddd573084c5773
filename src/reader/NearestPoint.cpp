#include "reader/NearestPoint.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace
{
double along(QPointF point, bool isAcross)
{
    return isAcross ? point.x() : point.y();
}
} // namespace

NearestPoint::NearestPoint(const QList<QPointF> &points)
    : m_points(points)
    , m_order(points.size())
{
    std::iota(m_order.begin(), m_order.end(), 0);
    arrange(0, m_order.size(), true);
}

void NearestPoint::arrange(qsizetype begin, qsizetype end, bool isAcross)
{
    if (end - begin < 2)
        return;
    const qsizetype middle = begin + (end - begin) / 2;
    std::nth_element(m_order.begin() + begin, m_order.begin() + middle, m_order.begin() + end,
                     [&](qsizetype a, qsizetype b) {
                         return along(m_points[a], isAcross) < along(m_points[b], isAcross);
                     });
    arrange(begin, middle, !isAcross);
    arrange(middle + 1, end, !isAcross);
}

NearestPoint::Found NearestPoint::nearestTo(QPointF place, double reach) const
{
    Found best{-1, reach};
    search(0, m_order.size(), true, place, best);
    return best;
}

void NearestPoint::search(qsizetype begin, qsizetype end, bool isAcross, QPointF place, Found &best) const
{
    if (begin >= end)
        return;
    const qsizetype middle = begin + (end - begin) / 2;
    const qsizetype index = m_order[middle];
    const QPointF point = m_points[index];
    const double distance = std::hypot(point.x() - place.x(), point.y() - place.y());
    const bool isFirstOfEqual = distance == best.distance && best.index >= 0 && index < best.index;
    if (distance < best.distance || isFirstOfEqual)
        best = {index, distance};

    const double beyond = along(place, isAcross) - along(point, isAcross);
    const auto low = [&] {
        search(begin, middle, !isAcross, place, best);
    };
    const auto high = [&] {
        search(middle + 1, end, !isAcross, place, best);
    };
    beyond < 0 ? low() : high();
    // As far away as the best is near enough: an equal one may come first.
    if (std::abs(beyond) <= best.distance)
        beyond < 0 ? high() : low();
}
