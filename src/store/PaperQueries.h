#pragma once

#include "store/Database.h"
#include "store/Paper.h"
#include "store/PaperTags.h"

#include <QList>
#include <QStringList>
#include <optional>

// Reading papers with their tags, and single columns, as steps of an operation of the database thread.

/// The papers in the rows of a statement that selects all columns of `papers`, in its order, each with all
/// its tags. Rows without id, title or path are left out.
Result<QList<Paper>> selectPapers(Database &database, const QString &sql, const SqlValues &parameters = {},
                                  TagLookup lookup = TagLookup::ById);

/// The papers among `ids` that exist, in no particular order, each once.
Result<QList<Paper>> selectPapersByIds(Database &database, const QStringList &ids);

Result<std::optional<Paper>> selectPaperById(Database &database, const QString &id);
Result<std::optional<Paper>> selectPaperByContentHash(Database &database, const QString &digest);
Result<std::optional<Paper>> selectPaperByFilepath(Database &database, const QString &filepath);

/// Takes the write lock for the open transaction, which must not have read yet: a write to the paper that
/// changes nothing. It waits for other programs and keeps them out, so that what is read next stays true.
Result<void> lockForPaper(Database &database, const QString &id);

/// Every text of one column, in the order of the rows; a NULL is left out.
Result<QStringList> selectTexts(Database &database, const QString &sql, QLatin1String column,
                                const SqlValues &parameters = {});
