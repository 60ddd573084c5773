#pragma once

#include "Figures.h"

#include <QObject>
#include <atomic>
#include <thread>

/// Asks the main thread for an answer every few milliseconds and remembers how long it took: what a person's
/// key or click would have waited.
class ResponseWatch : public QObject
{
public:
    ResponseWatch();
    ~ResponseWatch() override;

    /// The waits since the last call.
    std::vector<Milliseconds> takeWaits();

private:
    void ask();

    std::vector<Milliseconds> m_waits; ///< of the main thread
    std::atomic<bool> m_isOver = false;
    std::atomic<bool> m_isAnswered = true;
    std::thread m_asker;
};
