#pragma once

#include "ResponseWatch.h"

#include <QObject>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <vector>

/// Uses a library window as a person would, in real time, and prints for each thing that is done the longest
/// wait and how many waits were longer than 50 ms.
class WindowUse : public QObject
{
public:
    /// Begins at once; calls `whenDone` at the end.
    WindowUse(QWidget *window, std::function<void()> whenDone);

private:
    /// One thing that is done, in steps.
    struct Phase {
        const char *name;
        int steps;
        std::chrono::milliseconds pause; ///< between steps
        std::function<void(int step)> step;
    };

    std::vector<Phase> phases();
    void refresh(int step);
    void typeFilter(int step);
    void scroll(int step);
    void advance();
    void report(const char *name);

    QWidget *m_window;
    std::function<void()> m_whenDone;
    ResponseWatch m_watch;
    std::vector<Phase> m_phases;
    std::size_t m_phase = 0;
    int m_step = 0;
    QTimer m_timer;
};
