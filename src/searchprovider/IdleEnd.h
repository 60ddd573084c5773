#pragma once

#include "base/Clock.h"

#include <chrono>
#include <functional>
#include <memory>

/// Ends a program that nobody has used for a while. Needs an event loop.
class IdleEnd
{
public:
    /// Chosen: a person who has not typed for a minute has found it or given up.
    static constexpr std::chrono::milliseconds kIdleTime = std::chrono::minutes(1);

    /// Calls `end` when `kIdleTime` has passed since the last `used`, or since now.
    IdleEnd(const Clock &clock, std::function<void()> end);

    void used();

private:
    const Clock &m_clock;
    std::function<void()> m_end;
    std::unique_ptr<PendingCall> m_pending;
};
