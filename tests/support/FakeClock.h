#pragma once

#include "base/Clock.h"

#include <map>

/// A clock that stands still until a test moves it. Drive it from one thread.
class FakeClock : public Clock
{
public:
    QDateTime now() const override { return start.addMSecs(milliseconds()); }
    std::chrono::nanoseconds elapsed() const override { return passed; }

    /// Makes the calls that come due, in their order, each at its own time.
    void advance(std::chrono::nanoseconds time)
    {
        const std::chrono::nanoseconds end = passed + time;
        while (!m_calls.empty() && m_calls.begin()->first.first <= end) {
            const auto due = m_calls.extract(m_calls.begin());
            passed = due.key().first;
            due.mapped()();
        }
        passed = end;
    }

    [[nodiscard]] std::unique_ptr<PendingCall> callAfter(std::chrono::milliseconds delay,
                                                         std::function<void()> call) const override
    {
        const Due due{passed + delay, m_nextCall++};
        m_calls.emplace(due, std::move(call));
        return std::make_unique<FakeCall>(*this, due);
    }

    bool hasPendingCalls() const { return !m_calls.empty(); }

    QDateTime start = QDateTime({2025, 3, 7}, {14, 5, 9}, Qt::UTC);
    std::chrono::nanoseconds passed{0};

private:
    using Due = std::pair<std::chrono::nanoseconds, int>;

    class FakeCall : public PendingCall
    {
    public:
        FakeCall(const FakeClock &clock, Due due)
            : m_clock(clock)
            , m_due(due)
        {
        }
        ~FakeCall() override { m_clock.m_calls.erase(m_due); }

    private:
        const FakeClock &m_clock;
        Due m_due;
    };

    qint64 milliseconds() const
    {
        return std::chrono::duration_cast<std::chrono::milliseconds>(passed).count();
    }

    mutable std::map<Due, std::function<void()>> m_calls;
    mutable int m_nextCall = 0;
};
