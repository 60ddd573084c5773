#pragma once

#include <stop_token>
#include <thread>

/// While it lives, SIGINT and SIGTERM ask for a stop instead of ending the program; a second one ends it at
/// once. Create it before any other thread starts, because signals are blocked thread by thread.
class StopOnSignal
{
public:
    StopOnSignal();
    ~StopOnSignal();
    StopOnSignal(const StopOnSignal &) = delete;
    StopOnSignal &operator=(const StopOnSignal &) = delete;

    std::stop_token token() const { return m_stop.get_token(); }

private:
    void watch();

    std::stop_source m_stop;
    int m_signals = -1;
    int m_end = -1;
    std::thread m_watcher;
};
