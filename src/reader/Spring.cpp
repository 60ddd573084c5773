#include "reader/Spring.h"

#include <algorithm>
#include <cmath>
#include <numbers>

double springProgress(std::chrono::duration<double> elapsed, std::chrono::duration<double> response)
{
    // Damping fraction 1: x'' = -w^2 x - 2 w x' with x(0) = 1 and x'(0) = 0 has x = (1 + w t) e^(-w t).
    const double swung = std::max(0.0, 2 * std::numbers::pi * elapsed / response);
    return 1 - (1 + swung) * std::exp(-swung);
}
