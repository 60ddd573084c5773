#pragma once

#include <chrono>

/// How long an undamped swing of the spring takes: how quick a motion feels.
inline constexpr std::chrono::duration<double> kSpringResponse{0.5};

/// When a motion may end: less than a thousandth of its way is left then.
inline constexpr std::chrono::milliseconds kSpringSettles{750};

/// The part of its way that a critically damped spring, let go at rest, has come after `elapsed`: 0 at the
/// start, towards 1, never beyond.
double springProgress(std::chrono::duration<double> elapsed,
                      std::chrono::duration<double> response = kSpringResponse);
