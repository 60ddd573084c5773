#pragma once

#include <cstddef>

/// The length of the memory through which the program stops the request in flight: an `int` that is 0, and
/// not 0 once the engine shall end its work. Shared memory, so that a busy engine needs neither a thread nor
/// a look at its socket to notice; the engine lays the structure that MuPDF looks at over it.
///
/// The program raises it only while it waits for a reply, and lowers it before it asks again.
inline constexpr std::size_t kStopFlagBytes = 4096;
