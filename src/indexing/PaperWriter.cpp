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

Result<void> writeAll(Database &database, const NewPaper &added)
{
    const QString &id = added.paper.id;
    if (auto written = writeRow(database, added); !written)
        return written;
    if (auto cleared = database.execute(QStringLiteral("DELETE FROM fts_papers WHERE paper_id = ?"), {id});
        !cleared)
        return cleared;
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
    if (auto written = inTransaction(database, [&] { return writeAll(database, paper); }); !written)
        return written.error();
    return std::optional<Paper>();
}
