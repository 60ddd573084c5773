// The papers. Tags and bookmarks have files of their own.
#include "store/NativeLibraryService.h"

#include "store/DatabaseManager.h"
#include "store/PageRows.h"
#include "store/PaperQueries.h"
#include "store/SystemSearchPublisher.h"

#include <QFile>

namespace
{
const auto kTitleOrder = QStringLiteral(" ORDER BY title COLLATE NOCASE ASC, authors COLLATE NOCASE ASC");

constexpr int kPaperMissing = 1;

/// The paper as it stands after a change; its absence is an error with this description.
Result<Paper> readBack(Database &database, const QString &id, const QString &missing)
{
    const Result<std::optional<Paper>> paper = selectPaperById(database, id);
    if (!paper)
        return paper.error();
    if (!*paper)
        return Error{QStringLiteral("NativeLibraryService"), kPaperMissing, missing, {}};
    return **paper;
}

Result<void> writeEdit(Database &database, const QString &id, const PaperEdit &edit)
{
    QStringList assignments;
    SqlValues parameters;
    const auto assign = [&](const QString &assignment, const auto &value) {
        if (!value)
            return;
        assignments.append(assignment);
        parameters.append(*value);
    };
    assign(QStringLiteral("title = ?"), edit.title);
    assign(QStringLiteral("authors = ?"), edit.authors);
    assign(QStringLiteral("year = ?"), edit.year);
    if (assignments.isEmpty())
        return {};
    parameters.append(id);
    return database.execute(u"UPDATE papers SET " + assignments.join(QStringLiteral(", ")) + u" WHERE id = ?",
                            parameters);
}

/// Removes the paper with its full-text rows, whole or not at all.
Result<void> deleteRows(Database &database, const QString &id)
{
    return inTransaction(database, [&]() -> Result<void> {
        auto done = lockForPaper(database, id); // before the rows are looked for
        if (!done)
            return done;
        const std::optional<PageRows> pages = findPageRows(database, id);
        done = database.execute(QStringLiteral("DELETE FROM papers WHERE id = ?"), {id});
        return done ? deletePagesOf(database, id, pages) : done;
    });
}

Result<qint64> countOf(Database &database, const QString &sql, const SqlValues &parameters = {})
{
    const auto rows = database.query(sql, parameters);
    if (!rows)
        return rows.error();
    return rows->isEmpty() ? 0 : rows->first().integer(QLatin1String("n")).value_or(0);
}

/// Counts here: SQLite would sort the tags of all papers first.
Result<QHash<QString, qint64>> countsByTag(Database &database)
{
    Result<Statement> statement = database.prepare(QStringLiteral("SELECT tag FROM tags"));
    if (!statement)
        return statement.error();
    QHash<QByteArray, qint64> byName;
    while (statement->step() == Statement::Step::Row) {
        const QByteArrayView tag = statement->utf8(0).value_or(QByteArrayView());
        const auto known = byName.find(QByteArray::fromRawData(tag.data(), tag.size()));
        if (known != byName.end())
            ++*known;
        else
            byName.insert(tag.toByteArray(), 1);
    }
    QHash<QString, qint64> counts;
    for (auto count = byName.begin(); count != byName.end(); ++count)
        counts.insert(QString::fromUtf8(count.key()), count.value());
    return counts;
}

Result<PaperCounts> countPapers(Database &database, const std::optional<QString> &cutOff)
{
    const auto all = countOf(database, QStringLiteral("SELECT count(*) AS n FROM papers"));
    if (!all)
        return all.error();
    Result<qint64> recent(0);
    if (cutOff)
        recent = countOf(database, QStringLiteral("SELECT count(*) AS n FROM papers WHERE date_indexed >= ?"),
                         {*cutOff});
    if (!recent)
        return recent.error();
    const auto byTag = countsByTag(database);
    if (!byTag)
        return byTag.error();
    return PaperCounts{.all = *all, .recentlyImported = *recent, .byTag = *byTag};
}
} // namespace

NativeLibraryService::NativeLibraryService(DatabaseManager &db, SystemSearchPublisher &publisher,
                                           BookmarkEvents &bookmarkEvents, Urgency urgency)
    : m_db(db)
    , m_publisher(publisher)
    , m_bookmarkEvents(bookmarkEvents)
    , m_urgency(urgency)
{
}

QFuture<Result<QList<Paper>>> NativeLibraryService::allPapers()
{
    return m_db.perform(m_urgency, [](Database &database) {
        return selectPapers(database, u"SELECT * FROM papers" + kTitleOrder, {}, TagLookup::Scan);
    });
}

QFuture<Result<QList<Paper>>> NativeLibraryService::papersWithTag(const QString &tag)
{
    return m_db.perform(m_urgency, [tag](Database &database) {
        return selectPapers(database,
                            u"SELECT p.* FROM papers p\nJOIN tags t ON t.paper_id = p.id\nWHERE t.tag = ?" +
                                kTitleOrder,
                            {tag});
    });
}

QFuture<Result<QList<Paper>>> NativeLibraryService::papersByIds(const QStringList &ids)
{
    return m_db.perform(m_urgency, [ids](Database &database) { return selectPapersByIds(database, ids); });
}

QFuture<Result<QList<Paper>>> NativeLibraryService::recentlyImportedPapers(const QString &cutOff)
{
    return m_db.perform(m_urgency, [cutOff](Database &database) {
        return selectPapers(
            database,
            QStringLiteral("SELECT * FROM papers WHERE date_indexed >= ? ORDER BY date_indexed DESC"),
            {cutOff});
    });
}

QFuture<Result<PaperCounts>> NativeLibraryService::paperCounts(const std::optional<QString> &cutOff)
{
    return m_db.perform(m_urgency, [cutOff](Database &database) { return countPapers(database, cutOff); });
}

QFuture<Result<std::optional<Paper>>> NativeLibraryService::paperById(const QString &id)
{
    return m_db.perform(m_urgency, [id](Database &database) { return selectPaperById(database, id); });
}

QFuture<Result<std::optional<Paper>>> NativeLibraryService::paperByContentHash(const QString &digest)
{
    return m_db.perform(m_urgency,
                        [digest](Database &database) { return selectPaperByContentHash(database, digest); });
}

QFuture<Result<std::optional<QString>>> NativeLibraryService::contentHashOfPaper(const QString &id)
{
    return m_db.perform(m_urgency, [id](Database &database) -> Result<std::optional<QString>> {
        const auto hashes =
            selectTexts(database, QStringLiteral("SELECT content_hash FROM papers WHERE id = ?"),
                        QLatin1String("content_hash"), {id});
        if (!hashes)
            return hashes.error();
        return hashes->isEmpty() ? std::nullopt : std::optional(hashes->first());
    });
}

QFuture<Result<std::optional<Paper>>> NativeLibraryService::paperByFilepath(const QString &filepath)
{
    return m_db.perform(m_urgency,
                        [filepath](Database &database) { return selectPaperByFilepath(database, filepath); });
}

QFuture<Result<QStringList>> NativeLibraryService::paperIdsWithPrefix(const QString &prefix)
{
    // Every text that begins with the prefix sorts before the prefix followed by the last code point.
    const QString end = prefix + QString::fromUcs4(U"\U0010FFFF", 1);
    return m_db.perform(m_urgency, [prefix, end](Database &database) {
        return selectTexts(database,
                           QStringLiteral("SELECT id FROM papers WHERE id >= ? AND id < ? ORDER BY id ASC"),
                           QLatin1String("id"), {prefix, end});
    });
}

QFuture<Result<Paper>> NativeLibraryService::updateFilepath(const QString &id, const QString &filepath)
{
    return m_db.perform(m_urgency, [id, filepath](Database &database) -> Result<Paper> {
        const auto written =
            database.execute(QStringLiteral("UPDATE papers SET filepath = ? WHERE id = ?"), {filepath, id});
        if (!written)
            return written.error();
        return readBack(database, id, QStringLiteral("Paper not found after filepath update"));
    });
}

QFuture<Result<Paper>> NativeLibraryService::updatePaper(const QString &id, const PaperEdit &edit)
{
    return m_db.perform(m_urgency, [id, edit](Database &database) -> Result<Paper> {
        if (auto written = writeEdit(database, id, edit); !written)
            return written.error();
        return readBack(database, id, QStringLiteral("Paper not found after update"));
    });
}

QFuture<Result<QSet<QString>>> NativeLibraryService::allFilepaths()
{
    return m_db.perform(m_urgency, [](Database &database) -> Result<QSet<QString>> {
        const auto paths =
            selectTexts(database, QStringLiteral("SELECT filepath FROM papers"), QLatin1String("filepath"));
        if (!paths)
            return paths.error();
        return QSet<QString>(paths->begin(), paths->end());
    });
}

QFuture<Result<void>> NativeLibraryService::deletePaper(const QString &id)
{
    SystemSearchPublisher &publisher = m_publisher;
    return m_db.perform(m_urgency, [id, &publisher](Database &database) -> Result<void> {
        const auto covers =
            selectTexts(database, QStringLiteral("SELECT cover_path FROM papers WHERE id = ?"),
                        QLatin1String("cover_path"), {id});
        if (!covers)
            return covers.error();
        if (auto deleted = deleteRows(database, id); !deleted)
            return deleted;
        if (!covers->isEmpty() && !covers->first().isEmpty())
            QFile::remove(covers->first()); // a cover left behind harms nobody
        publisher.withdraw(id);
        return {};
    });
}
