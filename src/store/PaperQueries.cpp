#include "store/PaperQueries.h"

#include "store/PaperRow.h"

#include <QSet>

namespace
{
/// "?, ?, ?" for `count` parameters.
QString placeholders(qsizetype count)
{
    return QStringList(count, QStringLiteral("?")).join(QStringLiteral(", "));
}

/// Runs the statement `head` + placeholders + ")" for every slice of the ids and gathers the rows.
Result<QList<Row>> queryForIds(Database &database, const QString &head, const QStringList &ids)
{
    QList<Row> gathered;
    for (qsizetype from = 0; from < ids.size(); from += kIdsPerStatement) {
        const QStringList slice = ids.mid(from, kIdsPerStatement);
        Result<QList<Row>> rows =
            database.query(head + placeholders(slice.size()) + u')', SqlValues(slice.begin(), slice.end()));
        if (!rows)
            return rows;
        gathered += *std::move(rows);
    }
    return gathered;
}

Result<TagMap> tagsForPapers(Database &database, const QStringList &ids)
{
    const auto rows =
        queryForIds(database, QStringLiteral("SELECT paper_id, tag FROM tags WHERE paper_id IN ("), ids);
    if (!rows)
        return rows.error();
    TagMap tags;
    for (const Row &row : *rows) {
        const auto id = row.text(QLatin1String("paper_id"));
        const auto tag = row.text(QLatin1String("tag"));
        if (id && tag)
            tags[*id].append(*tag);
    }
    return tags;
}

Result<QList<Paper>> papersFromRows(Database &database, const QList<Row> &rows)
{
    QStringList ids;
    ids.reserve(rows.size());
    for (const Row &row : rows) {
        if (auto id = row.text(QLatin1String("id")))
            ids.append(*id);
    }
    const Result<TagMap> tags = tagsForPapers(database, ids);
    if (!tags)
        return tags.error();
    QList<Paper> papers;
    papers.reserve(rows.size());
    for (const Row &row : rows) {
        if (auto paper = paperFromRow(row, *tags))
            papers.append(*std::move(paper));
    }
    return papers;
}

Result<std::optional<Paper>> selectPaper(Database &database, const QString &sql, const QString &key)
{
    const Result<QList<Paper>> papers = selectPapers(database, sql, {key});
    if (!papers)
        return papers.error();
    return papers->isEmpty() ? std::nullopt : std::optional(papers->first());
}
} // namespace

Result<QStringList> selectTexts(Database &database, const QString &sql, QLatin1String column,
                                const SqlValues &parameters)
{
    const auto rows = database.query(sql, parameters);
    if (!rows)
        return rows.error();
    QStringList texts;
    for (const Row &row : *rows) {
        if (auto text = row.text(column))
            texts.append(*text);
    }
    return texts;
}

Result<QList<Paper>> selectPapers(Database &database, const QString &sql, const SqlValues &parameters)
{
    const auto rows = database.query(sql, parameters);
    if (!rows)
        return rows.error();
    return papersFromRows(database, *rows);
}

Result<QList<Paper>> selectPapersByIds(Database &database, const QStringList &ids)
{
    const QStringList distinct = QSet<QString>(ids.begin(), ids.end()).values();
    const auto rows = queryForIds(database, QStringLiteral("SELECT * FROM papers WHERE id IN ("), distinct);
    if (!rows)
        return rows.error();
    return papersFromRows(database, *rows);
}

Result<std::optional<Paper>> selectPaperById(Database &database, const QString &id)
{
    return selectPaper(database, QStringLiteral("SELECT * FROM papers WHERE id = ?"), id);
}

Result<std::optional<Paper>> selectPaperByContentHash(Database &database, const QString &digest)
{
    return selectPaper(database, QStringLiteral("SELECT * FROM papers WHERE content_hash = ? LIMIT 1"),
                       digest);
}

Result<std::optional<Paper>> selectPaperByFilepath(Database &database, const QString &filepath)
{
    return selectPaper(database, QStringLiteral("SELECT * FROM papers WHERE filepath = ? LIMIT 1"), filepath);
}

Result<void> lockForPaper(Database &database, const QString &id)
{
    return database.execute(QStringLiteral("UPDATE papers SET id = id WHERE id = ?"), {id});
}
