#pragma once

#include "base/Result.h"
#include "store/Paper.h"

#include <QList>

class Database;

/// Ids that one statement takes as parameters; longer lists are cut. Well under SQLite's limit.
inline constexpr qsizetype kIdsPerStatement = 500;

/// "?, ?, ?" for `count` parameters.
QString placeholders(qsizetype count);

/// Gives each of the papers all its tags, in the order in which the index of the tags has them. Equal names
/// share their text: most papers of a library have few tags between them.
Result<void> addTagsTo(QList<Paper> &papers, Database &database);
