#include "store/PaperQueries.h"

#include "store/PaperRow.h"
#include "store/PaperTags.h"
#include "store/Statement.h"

#include <QSet>

namespace
{
/// Appends the papers in the rows of the statement, without their tags.
Result<void> readRows(Database &database, const QString &sql, const SqlValues &parameters,
                      QList<Paper> &papers)
{
    Result<Statement> statement = database.prepare(sql, parameters);
    if (!statement)
        return statement.error();
    const PaperRow row(*statement);
    bool isFirst = true;
    Statement::Step step = statement->step();
    for (; step == Statement::Step::Row; step = statement->step()) {
        isFirst = false;
        if (auto paper = row.paper())
            papers.append(*std::move(paper));
    }
    // As with every query: a failure in the middle of the rows ends them.
    return step == Statement::Step::Failed && isFirst ? Result<void>(statement->error()) : Result<void>();
}

Result<QList<Paper>> withTags(QList<Paper> papers, Database &database, TagLookup lookup = TagLookup::ById)
{
    papers.squeeze();
    if (auto done = addTagsTo(papers, database, lookup); !done)
        return done.error();
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

Result<QList<Paper>> selectPapers(Database &database, const QString &sql, const SqlValues &parameters,
                                  TagLookup lookup)
{
    QList<Paper> papers;
    if (auto read = readRows(database, sql, parameters, papers); !read)
        return read.error();
    return withTags(std::move(papers), database, lookup);
}

Result<QList<Paper>> selectPapersByIds(Database &database, const QStringList &ids)
{
    const QStringList distinct = QSet<QString>(ids.begin(), ids.end()).values();
    QList<Paper> papers;
    for (qsizetype from = 0; from < distinct.size(); from += kIdsPerStatement) {
        const QStringList slice = distinct.mid(from, kIdsPerStatement);
        const QString sql = u"SELECT * FROM papers WHERE id IN (" + placeholders(slice.size()) + u')';
        if (auto read = readRows(database, sql, SqlValues(slice.begin(), slice.end()), papers); !read)
            return read.error();
    }
    return withTags(std::move(papers), database);
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
