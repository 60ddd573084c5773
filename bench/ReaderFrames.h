#pragma once

#include "Figures.h"

#include <QApplication>
#include <ctime>
#include <vector>

/// What the main thread took between the starts of two frames: by the wall clock, and of the processor, which
/// other programs do not make longer.
struct FrameTime {
    Milliseconds wall{};
    Milliseconds processor{};
};

/// The processor time of the calling thread so far.
inline Milliseconds threadTime()
{
    timespec time;
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

class ReaderFrames
{
public:
    static void clear()
    {
        s_frames.clear();
        s_busy = {};
    }
    /// Ends the frame before.
    static void begin()
    {
        s_frames.push_back(s_busy);
        s_busy = {};
    }
    template <typename Work> static void add(Work work)
    {
        const Milliseconds before = threadTime();
        s_busy.wall += timeOf(work);
        s_busy.processor += threadTime() - before;
    }
    static std::vector<Milliseconds> times(Milliseconds FrameTime::*clock)
    {
        std::vector<Milliseconds> times;
        for (const FrameTime &frame : s_frames)
            times.push_back(frame.*clock);
        return times;
    }

private:
    inline static std::vector<FrameTime> s_frames;
    inline static FrameTime s_busy;
};

/// An application that times what it delivers.
class FrameApplication : public QApplication
{
public:
    using QApplication::QApplication;

    bool notify(QObject *receiver, QEvent *event) override
    {
        if (m_isDelivering)
            return QApplication::notify(receiver, event);
        m_isDelivering = true;
        bool isHandled = false;
        ReaderFrames::add([&] { isHandled = QApplication::notify(receiver, event); });
        m_isDelivering = false;
        return isHandled;
    }

private:
    bool m_isDelivering = false;
};
