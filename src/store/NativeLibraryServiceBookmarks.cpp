// The bookmarks of `NativeLibraryService`.
#include "store/NativeLibraryService.h"

#include "store/DatabaseManager.h"

namespace
{
std::optional<Bookmark> bookmarkFromRow(const Row &row)
{
    const auto id = row.text(QLatin1String("id"));
    const auto paperId = row.text(QLatin1String("paper_id"));
    const auto text = row.text(QLatin1String("text"));
    const auto page = row.integer(QLatin1String("page"));
    const auto createdAt = row.text(QLatin1String("created_at"));
    if (!id || !paperId || !text || !page || !createdAt)
        return std::nullopt;
    return Bookmark{
        .id = *id,
        .paperId = *paperId,
        .text = *text,
        .page = *page,
        .label = row.text(QLatin1String("label")).value_or(QString()),
        .createdAt = *createdAt,
    };
}

Result<QList<Bookmark>> selectBookmarks(Database &database, const QString &sql, const SqlValues &parameters)
{
    const auto rows = database.query(sql, parameters);
    if (!rows)
        return rows.error();
    QList<Bookmark> bookmarks;
    for (const Row &row : *rows) {
        if (auto bookmark = bookmarkFromRow(row))
            bookmarks.append(*bookmark);
    }
    return bookmarks;
}
} // namespace

QFuture<Result<QList<Bookmark>>> NativeLibraryService::bookmarksForPaper(const QString &paperId)
{
    return m_db.perform(m_urgency, [paperId](Database &database) {
        return selectBookmarks(
            database,
            QStringLiteral("SELECT * FROM bookmarks WHERE paper_id = ? ORDER BY page ASC, created_at ASC"),
            {paperId});
    });
}

QFuture<Result<QList<Bookmark>>> NativeLibraryService::bookmarksWithIdPrefix(const QString &prefix)
{
    // Every text that begins with the prefix sorts before the prefix followed by the last code point.
    const QString end = prefix + QString::fromUcs4(U"\U0010FFFF", 1);
    return m_db.perform(m_urgency, [prefix, end](Database &database) {
        return selectBookmarks(
            database, QStringLiteral("SELECT * FROM bookmarks WHERE id >= ? AND id < ? ORDER BY id ASC"),
            {prefix, end});
    });
}

QFuture<Result<void>> NativeLibraryService::createBookmark(const Bookmark &bookmark)
{
    BookmarkEvents &events = m_bookmarkEvents;
    return m_db.perform(m_urgency, [bookmark, &events](Database &database) -> Result<void> {
        auto stored =
            database.execute(QStringLiteral("INSERT INTO bookmarks (id, paper_id, text, page, label, "
                                            "created_at) VALUES (?, ?, ?, ?, ?, ?)"),
                             {bookmark.id, bookmark.paperId, bookmark.text, bookmark.page, bookmark.label,
                              bookmark.createdAt});
        if (stored)
            events.post(bookmark.paperId);
        return stored;
    });
}

QFuture<Result<void>> NativeLibraryService::deleteBookmark(const QString &bookmarkId)
{
    BookmarkEvents &events = m_bookmarkEvents;
    return m_db.perform(m_urgency, [bookmarkId, &events](Database &database) -> Result<void> {
        // Asked first, because afterwards nobody knows whose bookmark it was.
        const auto owner =
            database.query(QStringLiteral("SELECT paper_id FROM bookmarks WHERE id = ?"), {bookmarkId});
        if (!owner)
            return owner.error();
        auto deleted = database.execute(QStringLiteral("DELETE FROM bookmarks WHERE id = ?"), {bookmarkId});
        if (deleted && !owner->isEmpty())
            events.post(owner->first().text(QLatin1String("paper_id")).value_or(QString()));
        return deleted;
    });
}
