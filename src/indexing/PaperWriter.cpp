#include "indexing/PaperWriter.h"

#include "store/Database.h"
#include "store/PageRows.h"
#include "store/PaperQueries.h"
#include "store/TagQueries.h"

namespace
{
SqlValue valueOrNull(const auto &optional)
{
    return optional ? SqlValue(*optional) : SqlValue();
}

Result<void> writeRow(Database &database, const NewPaper &added)
{
    const Paper &paper = added.paper;
    return database.execute(
        QStringLiteral("    INSERT OR REPLACE INTO papers (id, title, authors, year, filepath, cover_path, "
                       "date_indexed, page_count, chunk_count, content_hash)\n"
                       "    VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"),
        {paper.id, paper.title, paper.authors, valueOrNull(paper.year), paper.filepath, paper.coverPath,
         added.dateIndexed, paper.pageCount, qint64(added.chunks.size()), valueOrNull(added.contentHash)});
}

Result<void> writeTags(Database &database, const Paper &paper)
{
    for (const QString &tag : paper.tags) {
        if (const Result<void> written = insertTag(database, paper.id, tag); !written)
            return written;
    }
    return {};
}

/// Whether the library holds the paper already; true until the transaction ends.
Result<bool> isStored(Database &database, const QString &id)
{
    if (const auto locked = lockForPaper(database, id); !locked)
        return locked.error();
    const auto rows = database.query(QStringLiteral("SELECT changes() AS n"));
    if (!rows)
        return rows.error();
    return !rows->isEmpty() && rows->first().integer(QLatin1String("n")) != 0;
}

Result<void> writeAll(Database &database, const NewPaper &added, bool replacesStored)
{
    const QString &id = added.paper.id;
    const std::optional<PageRows> pages = replacesStored ? findPageRows(database, id) : std::nullopt;
    if (auto written = writeRow(database, added); !written)
        return written;
    // The ids in the full-text table are not indexed, so this may read all of it: only where there is
    // something to replace. At 200,000 rows it would cost every new paper more than all the rest of its
    // import.
    if (replacesStored) {
        if (auto cleared = deletePagesOf(database, id, pages); !cleared)
            return cleared;
    }
    if (auto written = database.insertChunks(id, added.chunks); !written)
        return written;
    return writeTags(database, added.paper);
}
} // namespace

Result<std::optional<Paper>> writePaper(Database &database, const NewPaper &paper)
{
    std::optional<Paper> known;
    auto written = inTransaction(database, [&]() -> Result<void> {
        const Result<bool> stored = isStored(database, paper.paper.id);
        if (!stored)
            return stored.error();
        if (paper.contentHash) {
            const auto found = selectPaperByContentHash(database, *paper.contentHash);
            if (!found)
                return found.error();
            known = *found;
        }
        return known ? Result<void>() : writeAll(database, paper, *stored);
    });
    if (!written)
        return written.error();
    return known;
}
