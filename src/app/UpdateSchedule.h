#pragma once

#include <chrono>
#include <functional>
#include <memory>

class Clock;
class PendingCall;
class UpdateSettings;

/// How long after its start the program first sees whether a check is due: it has better to do at first.
/// Chosen.
inline constexpr std::chrono::seconds kFirstUpdateLook{60};
/// How often it sees again. Not one call in a day's time: a machine that sleeps does not count its sleep.
inline constexpr std::chrono::hours kUpdateLookInterval{1};
/// How long after a check the next one is due.
inline constexpr std::chrono::hours kUpdateCheckInterval{24};

/// Calls for a check a day after the last one, whoever asked for that, while the settings want it. Main
/// thread.
class UpdateSchedule
{
public:
    /// Begins at once. All must outlive this.
    UpdateSchedule(const UpdateSettings &settings, const Clock &clock, std::function<void()> check);
    ~UpdateSchedule();

private:
    void lookIn(std::chrono::milliseconds delay);
    bool isDue() const;

    const UpdateSettings &m_settings;
    const Clock &m_clock;
    std::function<void()> m_check;
    std::unique_ptr<PendingCall> m_nextLook;
};
