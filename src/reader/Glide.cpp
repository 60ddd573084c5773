#include "reader/Glide.h"

#include <algorithm>
#include <cmath>

void Glide::start(QPointF from, QPointF to, Time now)
{
    m_from = from;
    m_to = to;
    m_started = now;
    m_isMoving = true;
}

void Glide::shift(QPointF by)
{
    m_from += by;
    m_to += by;
}

QPointF Glide::advance(Time now)
{
    const double done =
        std::clamp(double((now - m_started).count()) / double(Time(kDuration).count()), 0.0, 1.0);
    if (done >= 1)
        m_isMoving = false;
    return m_to + (m_from - m_to) * std::pow(1 - done, 3);
}
