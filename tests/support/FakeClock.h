#pragma once

#include "base/Clock.h"

/// A clock that stands still until a test moves it. Drive it from one thread.
class FakeClock : public Clock
{
public:
    QDateTime now() const override { return start.addMSecs(milliseconds()); }
    std::chrono::nanoseconds elapsed() const override { return passed; }
    void advance(std::chrono::nanoseconds time) { passed += time; }

    QDateTime start = QDateTime({2025, 3, 7}, {14, 5, 9}, Qt::UTC);
    std::chrono::nanoseconds passed{0};

private:
    qint64 milliseconds() const
    {
        return std::chrono::duration_cast<std::chrono::milliseconds>(passed).count();
    }
};
