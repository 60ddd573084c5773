#include "app/UpdateSchedule.h"

#include "app/UpdateSettings.h"
#include "base/Clock.h"

#include <utility>

UpdateSchedule::UpdateSchedule(const UpdateSettings &settings, const Clock &clock,
                               std::function<void()> check)
    : m_settings(settings)
    , m_clock(clock)
    , m_check(std::move(check))
{
    lookIn(kFirstUpdateLook);
}

UpdateSchedule::~UpdateSchedule() = default;

void UpdateSchedule::lookIn(std::chrono::milliseconds delay)
{
    m_nextLook = m_clock.callAfter(delay, [this] {
        lookIn(kUpdateLookInterval);
        if (isDue())
            m_check();
    });
}

bool UpdateSchedule::isDue() const
{
    if (!m_settings.checksDaily() || !m_settings.feedAddress())
        return false;
    const std::optional<QDateTime> last = m_settings.lastCheck();
    const QDateTime now = m_clock.now();
    // A check in the future was made by a clock that went wrong.
    return !last || *last > now || last->addSecs(std::chrono::seconds(kUpdateCheckInterval).count()) <= now;
}
