#include "app/RemainingTime.h"

#include <algorithm>
#include <cmath>

QString formatRemainingTime(double seconds)
{
    Q_ASSERT(std::isfinite(seconds) && seconds >= 0);
    const auto whole = static_cast<qint64>(seconds);
    if (seconds < 60)
        return QStringLiteral("~%1s remaining").arg(std::max<qint64>(whole, 1));
    const qint64 minutes = whole / 60;
    const qint64 rest = whole % 60;
    if (rest == 0)
        return QStringLiteral("~%1m remaining").arg(minutes);
    return QStringLiteral("~%1m %2s remaining").arg(minutes).arg(rest);
}
