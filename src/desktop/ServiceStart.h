#pragma once

#include "base/Clock.h"

#include <chrono>
#include <functional>
#include <memory>

/// How long a program that the bus started waits for a window to be asked for. Chosen: the bus hands its call
/// over within moments, and a paper is found within seconds even while an import writes.
inline constexpr std::chrono::milliseconds kServicePatience = std::chrono::seconds(15);

/// For a program that the bus started: calls `end` after `kServicePatience` unless it `hasWindow` by then.
/// From its first window on it ends with its last. Calls nothing once the answer is destroyed.
[[nodiscard]] std::unique_ptr<PendingCall>
endUnlessAWindowComes(const Clock &clock, std::function<bool()> hasWindow, std::function<void()> end);
