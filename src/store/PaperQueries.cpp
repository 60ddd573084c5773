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

/// Runs the statement `head` + placeholders + ")" for every slice of the ids.
Result<void> forEachRowOfIds(Database &database, const QString &head, const QStringList &ids,
                             const std::function<void(const Row &row)> &read)
{
    for (qsizetype from = 0; from < ids.size(); from += kIdsPerStatement) {
        const QStringList slice = ids.mid(from, kIdsPerStatement);
        auto done = database.forEachRow(head + placeholders(slice.size()) + u')',
                                        SqlValues(slice.begin(), slice.end()), read);
        if (!done)
            return done;
    }
    return {};
}

/// Gathers the tags of papers from rows of `tags`. A tag that many papers carry is kept once.
class TagCollector
{
public:
    void read(const Row &row)
    {
        const auto id = row.text(QLatin1String("paper_id"));
        const auto tag = row.text(QLatin1String("tag"));
        if (id && tag)
            m_tags[*id].append(*m_names.insert(*tag));
    }

    void giveTo(QList<Paper> &papers)
    {
        for (Paper &paper : papers)
            paper.tags = m_tags.value(paper.id);
    }

private:
    QHash<QString, QStringList> m_tags; ///< by paper id
    QSet<QString> m_names;
};

/// The papers in rows of all columns of `papers`.
class PaperCollector
{
public:
    void read(const Row &row)
    {
        if (auto paper = paperFromRow(row))
            m_papers.append(*std::move(paper));
    }

    Result<QList<Paper>> withTheirTags(Database &database)
    {
        QStringList ids;
        ids.reserve(m_papers.size());
        for (const Paper &paper : m_papers)
            ids.append(paper.id);
        TagCollector tags;
        const auto read =
            forEachRowOfIds(database, QStringLiteral("SELECT paper_id, tag FROM tags WHERE paper_id IN ("),
                            ids, [&](const Row &row) { tags.read(row); });
        if (!read)
            return read.error();
        tags.giveTo(m_papers);
        return std::move(m_papers);
    }

    /// The same by reading the tags of the whole library, in the order in which one paper's come otherwise.
    Result<QList<Paper>> withAllTags(Database &database)
    {
        TagCollector tags;
        const auto read =
            database.forEachRow(QStringLiteral("SELECT paper_id, tag FROM tags ORDER BY paper_id, tag"), {},
                                [&](const Row &row) { tags.read(row); });
        if (!read)
            return read.error();
        tags.giveTo(m_papers);
        return std::move(m_papers);
    }

private:
    QList<Paper> m_papers;
};

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
    PaperCollector papers;
    const auto read = database.forEachRow(sql, parameters, [&](const Row &row) { papers.read(row); });
    if (!read)
        return read.error();
    return papers.withTheirTags(database);
}

Result<QList<Paper>> selectAllPapers(Database &database, const QString &order)
{
    PaperCollector papers;
    const auto read =
        database.forEachRow(u"SELECT * FROM papers" + order, {}, [&](const Row &row) { papers.read(row); });
    if (!read)
        return read.error();
    return papers.withAllTags(database);
}

Result<QList<Paper>> selectPapersByIds(Database &database, const QStringList &ids)
{
    const QStringList distinct = QSet<QString>(ids.begin(), ids.end()).values();
    PaperCollector papers;
    const auto read = forEachRowOfIds(database, QStringLiteral("SELECT * FROM papers WHERE id IN ("),
                                      distinct, [&](const Row &row) { papers.read(row); });
    if (!read)
        return read.error();
    return papers.withTheirTags(database);
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

Result<void> lockForPaper(Database &database, const QString &id)
{
    return database.execute(QStringLiteral("UPDATE papers SET id = id WHERE id = ?"), {id});
}
