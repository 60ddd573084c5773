#include "search/NativeSearchService.h"

#include "base/Log.h"
#include "search/FTSQueryBuilder.h"
#include "search/SearchHits.h"
#include "store/DatabaseManager.h"
#include "store/PageRows.h"
#include "store/PaperQueries.h"

namespace
{
// Match start, match end and cut text all have the same marker; SnippetMarkup tells them apart.
const auto kRankedPages =
    QStringLiteral("    SELECT paper_id, page_num,\n"
                   "           snippet(fts_papers, 2, '...', '...', '...', 10) as snippet,\n"
                   "           bm25(fts_papers) as rank\n"
                   "    FROM fts_papers\n"
                   "    WHERE fts_papers MATCH ?\n"
                   "    ORDER BY rank\n"
                   "    LIMIT 50");

const auto kPagesOfPaper =
    QStringLiteral("    SELECT page_num,\n"
                   "           snippet(fts_papers, 2, '...', '...', '...', 10) as snippet\n"
                   "    FROM fts_papers\n"
                   "    WHERE paper_id = ? AND fts_papers MATCH ?\n"
                   "    ORDER BY page_num ASC\n"
                   "    LIMIT 100");

/// The rows; a failure is logged as `what` failing for the expression, and leaves none.
QList<Row> rowsOrLog(const Result<QList<Row>> &rows, const QString &what, const QString &expression)
{
    if (rows)
        return *rows;
    logLine(QStringLiteral("NativeSearchService: ") + what + u" failed for '" + expression + u"': " +
            rows.error().description);
    return {};
}

Result<SearchHits> findHits(Database &database, const QString &expression)
{
    SearchHits hits;
    hits.rows =
        rowsOrLog(database.query(kRankedPages, {expression}), QStringLiteral("FTS query"), expression);
    QStringList ids;
    for (const Row &row : hits.rows) {
        if (auto id = row.text(QLatin1String("paper_id")))
            ids.append(*id);
    }
    const Result<QList<Paper>> papers = selectPapersByIds(database, ids);
    if (!papers)
        return papers.error();
    for (const Paper &paper : *papers)
        hits.papers.insert(paper.id, paper);
    return hits;
}

QList<Passage> passagesIn(const QList<Row> &rows)
{
    QList<Passage> passages;
    for (const Row &row : rows) {
        const auto snippet = row.text(QLatin1String("snippet"));
        const auto page = row.integer(QLatin1String("page_num"));
        if (snippet && page)
            passages.append({.text = *snippet, .page = *page});
    }
    return passages;
}
} // namespace

NativeSearchService::NativeSearchService(DatabaseManager &db)
    : m_db(db)
{
}

QFuture<Result<QList<SearchResult>>> NativeSearchService::search(const QString &query)
{
    using Results = Result<QList<SearchResult>>;
    const QString expression = buildFTSQuery(query);
    if (expression.isEmpty())
        return QtFuture::makeReadyFuture(Results());
    QFuture<Result<SearchHits>> finding = m_db.perform(
        Urgency::PersonWaits, [expression](Database &database) { return findHits(database, expression); });
    // Grouping runs after the operation, wherever its answer is taken: no event loop and no pool thread is
    // needed, so any thread may block on the result. It handles 50 rows at most.
    return finding.then([](const Result<SearchHits> &hits) -> Results {
        if (!hits)
            return hits.error();
        return groupedByPaper(*hits);
    });
}

QFuture<Result<QList<Passage>>> NativeSearchService::searchInPaper(const QString &paperId,
                                                                   const QString &query)
{
    using Passages = Result<QList<Passage>>;
    const QString expression = buildFTSQuery(query);
    if (expression.isEmpty())
        return QtFuture::makeReadyFuture(Passages());
    return m_db.perform(Urgency::PersonWaits, [paperId, expression](Database &database) -> Passages {
        const auto rows = queryPagesOf(database, paperId, kPagesOfPaper, {paperId, expression});
        return passagesIn(rowsOrLog(rows, QStringLiteral("in-paper FTS query"), expression));
    });
}
