#include "reader/ZoomSteps.h"

#include <array>

namespace
{
constexpr std::array kSteps = {0.1, 0.25, 0.33, 0.5, 0.67, 0.75, 0.9, 1.0, 1.1, 1.25,
                               1.5, 1.75, 2.0,  2.5, 3.0,  4.0,  5.0, 6.0, 8.0, 12.0};
/// A scale this near a step stands on it.
constexpr double kTolerance = 0.005;
} // namespace

double nextLargerScale(double scale)
{
    for (const double step : kSteps) {
        if (step > scale * (1 + kTolerance))
            return step;
    }
    return kSteps.back();
}

double nextSmallerScale(double scale)
{
    for (auto step = kSteps.rbegin(); step != kSteps.rend(); ++step) {
        if (*step < scale * (1 - kTolerance))
            return *step;
    }
    return kSteps.front();
}
