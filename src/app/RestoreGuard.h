#pragma once

#include <chrono>
#include <memory>

class Clock;
class PendingCall;
class Preferences;

/// How long a program must have gone on after opening the papers of the last session for its end not to be
/// laid to them. Chosen: opening and drawing what is visible takes seconds.
inline constexpr std::chrono::minutes kRestoreTrial{1};

/// Keeps papers that bring the program down from doing so at every start: counts how often in a row it came
/// to no good end soon after it had opened them. The count is kept in the preferences. Main thread.
class RestoreGuard
{
public:
    /// Both must outlive the guard.
    RestoreGuard(Preferences &preferences, const Clock &clock);
    ~RestoreGuard();

    /// Whether the last two times ended badly, so that a person should decide about a third.
    bool mustAsk() const;
    /// Counts as a bad end from now on, unless the program goes on for a minute or says that it ends.
    void restoring();
    /// What was opened did no harm, or will not be opened again.
    void allIsWell();
    /// The program ends in good order: well, if it was on trial; otherwise nothing was learnt.
    void programEnds();

private:
    int badEnds() const;

    Preferences &m_preferences;
    const Clock &m_clock;
    std::unique_ptr<PendingCall> m_trial;
};
