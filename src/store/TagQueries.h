#pragma once

#include "base/Result.h"

#include <QString>

class Database;

/// Gives the paper a tag of the user's; one that has a tag to show is no longer "Untagged". In the caller's
/// transaction, on the database's thread.
Result<void> giveTag(Database &database, const QString &paperId, const QString &tag);
