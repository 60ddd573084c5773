#pragma once

#include <QPointF>
#include <chrono>

/// A movement that starts fast and comes to rest softly. Arithmetic; time is given.
class Glide
{
public:
    using Time = std::chrono::nanoseconds;

    /// Chosen: long enough to follow with the eye, short enough not to wait for.
    static constexpr std::chrono::milliseconds kDuration{160};

    void start(QPointF from, QPointF to, Time now);
    void stop() { m_isMoving = false; }
    /// What it moves over has moved itself.
    void shift(QPointF by);
    bool isMoving() const { return m_isMoving; }
    QPointF target() const { return m_to; }
    /// Where it is at `now`; at rest from the end on.
    QPointF advance(Time now);

private:
    QPointF m_from;
    QPointF m_to;
    Time m_started{0};
    bool m_isMoving = false;
};
