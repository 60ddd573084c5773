#pragma once

#include <QString>

/// "~59s remaining", "~2m remaining", "~2m 5s remaining"; never zero seconds, no hours. `seconds` must be
/// finite and not negative.
QString formatRemainingTime(double seconds);
