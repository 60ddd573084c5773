#pragma once

#include "store/Database.h"

#include <functional>
#include <optional>

// Finding the full-text rows of one paper without reading those of all others. The full-text table cannot be
// asked by paper: it would read every hit in the library, or every page, to compare its paper_id.

/// Row ids of the full-text table, both ends included.
struct PageRows {
    qint64 first = 0;
    qint64 last = 0;

    friend bool operator==(const PageRows &, const PageRows &) = default;
};

/// The rows of the paper, when it is certain that these are all: papers and their pages are inserted
/// together, so both are in the same order and a binary search over the stored pages (some twenty of them in
/// a million) finds the paper's first; the paper's chunk_count says how many there must be, side by side.
/// Nothing when the library does not bear that out, or the paper has no pages. Pages that stand elsewhere
/// under the id of a paper whose own pages are complete, which only damage can leave, are not found.
///
/// Call within a transaction, or the rows may have changed before they are used.
std::optional<PageRows> findPageRows(Database &database, const QString &paperId);

/// Answers what `query` answers, which asks `fts_papers` for pages of the one paper, and lets it read only
/// that paper's rows when they are found. Its statement runs as it is: for its time a temporary view of the
/// table, under the table's name, shows no other rows.
Result<QList<Row>> queryPagesOf(Database &database, const QString &paperId,
                                const std::function<Result<QList<Row>>()> &query);

/// Deletes the paper's full-text rows, `rows` being what `findPageRows` answered while the paper was there:
/// when they are known, without reading those of all other papers.
Result<void> deletePagesOf(Database &database, const QString &paperId, const std::optional<PageRows> &rows);
