#include "base/Clock.h"

#include <QTimer>

namespace
{
class TimedCall : public PendingCall
{
public:
    TimedCall(std::chrono::milliseconds delay, std::function<void()> call)
    {
        m_timer.setSingleShot(true);
        m_timer.setTimerType(Qt::PreciseTimer);
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [call = std::move(call)] {
            const auto kept = call; // the call may destroy this
            kept();
        });
        m_timer.start(delay);
    }

private:
    QTimer m_timer;
};
} // namespace

QDateTime SystemClock::now() const
{
    return QDateTime::currentDateTimeUtc();
}

std::chrono::nanoseconds SystemClock::elapsed() const
{
    return std::chrono::steady_clock::now().time_since_epoch();
}

std::unique_ptr<PendingCall> SystemClock::callAfter(std::chrono::milliseconds delay,
                                                    std::function<void()> call) const
{
    return std::make_unique<TimedCall>(delay, std::move(call));
}

QString toStoredTime(const QDateTime &time)
{
    return time.toUTC().toString(QStringLiteral("yyyy-MM-ddTHH:mm:ssZ"));
}
