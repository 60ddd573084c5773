#pragma once

#include "store/Paper.h"
#include "store/Row.h"

#include <QHash>
#include <optional>

/// The tags of each paper, by paper id.
using TagMap = QHash<QString, QStringList>;

/// The paper in a row of all columns of `papers`; none when its id, title or path is missing or no text.
std::optional<Paper> paperFromRow(const Row &row, const TagMap &tags);
