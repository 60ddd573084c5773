#pragma once

#include <QDateTime>
#include <QString>
#include <chrono>
#include <functional>
#include <memory>

/// A call that is yet to come; destroying it calls it off.
class PendingCall
{
public:
    virtual ~PendingCall() = default;
};

/// The time, through a seam that tests drive by hand. Every call may come from any thread.
class Clock
{
public:
    virtual ~Clock() = default;

    virtual QDateTime now() const = 0;
    /// Time since an unspecified start; never goes back. For measuring how long something took.
    virtual std::chrono::nanoseconds elapsed() const = 0;
    /// Calls `call` once, on the calling thread's event loop, when `delay` has passed, unless the answer is
    /// destroyed first.
    [[nodiscard]] virtual std::unique_ptr<PendingCall> callAfter(std::chrono::milliseconds delay,
                                                                 std::function<void()> call) const = 0;
};

/// The machine's own clocks.
class SystemClock : public Clock
{
public:
    QDateTime now() const override;
    std::chrono::nanoseconds elapsed() const override;
    [[nodiscard]] std::unique_ptr<PendingCall> callAfter(std::chrono::milliseconds delay,
                                                         std::function<void()> call) const override;
};

/// ISO 8601 in UTC with whole seconds and a "Z", the one form in which times are stored: it sorts as time
/// does.
QString toStoredTime(const QDateTime &time);
