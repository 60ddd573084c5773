#pragma once

#include "base/Result.h"
#include "store/Paper.h"

#include <QList>

class Database;

/// Ids that one statement takes as parameters; longer lists are cut. Well under SQLite's limit.
inline constexpr qsizetype kIdsPerStatement = 500;

/// "?, ?, ?" for `count` parameters.
QString placeholders(qsizetype count);

/// How the tags of a list of papers are found.
enum class TagLookup {
    ById, ///< by the ids, slice by slice
    Scan, ///< by one walk over all tags of the library: far sooner when the list is all papers
};

/// Gives each of the papers all its tags, ascending. Equal names share their text: most papers of a library
/// have few tags between them.
Result<void> addTagsTo(QList<Paper> &papers, Database &database, TagLookup lookup = TagLookup::ById);
