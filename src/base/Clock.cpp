#include "base/Clock.h"

QDateTime SystemClock::now() const
{
    return QDateTime::currentDateTimeUtc();
}

std::chrono::nanoseconds SystemClock::elapsed() const
{
    return std::chrono::steady_clock::now().time_since_epoch();
}

QString toStoredTime(const QDateTime &time)
{
    return time.toUTC().toString(QStringLiteral("yyyy-MM-ddTHH:mm:ssZ"));
}
