#pragma once

#include <QString>
#include <optional>

/// The number that `text` is: an optional sign, then decimal digits and nothing else. None for anything else
/// and for what does not fit.
std::optional<qint64> decimalInteger(const QString &text);
