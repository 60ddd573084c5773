#pragma once

#include <algorithm>
#include <chrono>
#include <vector>

using Milliseconds = std::chrono::duration<double, std::milli>;

/// How long `work` takes by the wall clock.
template <typename Work> Milliseconds timeOf(Work work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::steady_clock::now() - start;
}

/// The least of `times`, which must not be empty, that `percent` of a hundred do not exceed.
inline Milliseconds percentile(std::vector<Milliseconds> times, std::size_t percent)
{
    const auto place = times.begin() + static_cast<std::ptrdiff_t>((times.size() - 1) * percent / 100);
    std::nth_element(times.begin(), place, times.end());
    return *place;
}

/// The middle one of `times`, which must not be empty.
inline Milliseconds median(std::vector<Milliseconds> times)
{
    const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
    std::nth_element(times.begin(), middle, times.end());
    return *middle;
}
