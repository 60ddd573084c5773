#include "app/RestoreGuard.h"

#include "base/Clock.h"
#include "platform/Preferences.h"

namespace
{
const auto kBadEndsKey = QStringLiteral("badEndsAfterRestoring");
} // namespace

RestoreGuard::RestoreGuard(Preferences &preferences, const Clock &clock)
    : m_preferences(preferences)
    , m_clock(clock)
{
}

RestoreGuard::~RestoreGuard() = default;

bool RestoreGuard::mustAsk() const
{
    constexpr int kBearable = 1;
    return badEnds() > kBearable;
}

void RestoreGuard::restoring()
{
    // Written beforehand, because a program that crashes writes nothing any more.
    m_preferences.setText(kBadEndsKey, QString::number(badEnds() + 1));
    m_trial = m_clock.callAfter(kRestoreTrial, [this] { allIsWell(); });
}

void RestoreGuard::allIsWell()
{
    m_trial.reset();
    if (badEnds() != 0)
        m_preferences.setText(kBadEndsKey, QString::number(0));
}

void RestoreGuard::programEnds()
{
    if (m_trial)
        allIsWell();
}

int RestoreGuard::badEnds() const
{
    return m_preferences.text(kBadEndsKey).value_or(QString()).toInt();
}
