#include "indexing/PaperWriter.h"

#include "store/Database.h"
#include "store/PaperQueries.h"

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
        const auto written = database.execute(
            QStringLiteral("INSERT OR IGNORE INTO tags (paper_id, tag) VALUES (?, ?)"), {paper.id, tag});
        if (!written)
            return written;
    }
    return {};
}

/// Whether the library may hold text of the paper already.
Result<bool> isStored(Database &database, const QString &id)
{
    const auto rows = database.query(QStringLiteral("SELECT 1 FROM papers WHERE id = ?"), {id});
    if (!rows)
        return rows.error();
    return !rows->isEmpty();
}

Result<void> writeAll(Database &database, const NewPaper &added, bool replacesStored)
{
    const QString &id = added.paper.id;
    if (auto written = writeRow(database, added); !written)
        return written;
    // The ids in the full-text table are not indexed, so this reads all of it: only where there is something
    // to replace. At 200,000 rows it would cost every new paper more than all the rest of its import.
    if (replacesStored) {
        auto cleared = database.execute(QStringLiteral("DELETE FROM fts_papers WHERE paper_id = ?"), {id});
        if (!cleared)
            return cleared;
    }
    if (auto written = database.insertChunks(id, added.chunks); !written)
        return written;
    return writeTags(database, added.paper);
}
} // namespace

Result<std::optional<Paper>> writePaper(Database &database, const NewPaper &paper)
{
    if (paper.contentHash) {
        Result<std::optional<Paper>> known = selectPaperByContentHash(database, *paper.contentHash);
        if (!known || *known)
            return known;
    }
    const Result<bool> stored = isStored(database, paper.paper.id);
    if (!stored)
        return stored.error();
    auto written = inTransaction(database, [&] { return writeAll(database, paper, *stored); });
    if (!written)
        return written.error();
    return std::optional<Paper>();
}
