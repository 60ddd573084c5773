#pragma once

#include "store/Paper.h"
#include "store/Row.h"

#include <optional>

/// The paper in a row of the columns of `papers` (those that no paper shows may be missing), without its
/// tags; none when its id, title or path is missing or no text.
std::optional<Paper> paperFromRow(const Row &row);
