#pragma once

#include "base/Result.h"

#include <QString>

class Database;

// Changes of one paper's tags, as steps of an operation of the database thread.

/// Does nothing when the paper has the tag.
Result<void> insertTag(Database &database, const QString &paperId, const QString &tag);
/// Does nothing when the paper does not have the tag.
Result<void> removeTag(Database &database, const QString &paperId, const QString &tag);
/// Gives the paper a tag of the user's; one that has a tag to show is no longer "Untagged". In the caller's
/// transaction.
Result<void> giveTag(Database &database, const QString &paperId, const QString &tag);
