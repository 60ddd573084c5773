#pragma once

#include "Figures.h"

#include <QApplication>
#include <vector>

/// For how long the main thread was busy between the starts of two frames.
class ReaderFrames
{
public:
    static void clear()
    {
        s_times.clear();
        s_busy = {};
    }
    /// Ends the frame before.
    static void begin()
    {
        s_times.push_back(s_busy);
        s_busy = {};
    }
    static void add(Milliseconds time) { s_busy += time; }
    static std::vector<Milliseconds> times() { return s_times; }

private:
    inline static std::vector<Milliseconds> s_times;
    inline static Milliseconds s_busy{};
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
        ReaderFrames::add(timeOf([&] { isHandled = QApplication::notify(receiver, event); }));
        m_isDelivering = false;
        return isHandled;
    }

private:
    bool m_isDelivering = false;
};
