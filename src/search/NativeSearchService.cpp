#include "search/NativeSearchService.h"

#include "base/Log.h"
#include "base/TextClasses.h"
#include "search/FTSQueryBuilder.h"
#include "search/SearchHits.h"
#include "store/DatabaseManager.h"
#include "store/PageRows.h"
#include "store/PaperQueries.h"

#include <chrono>
#include <utility>

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

/// Parsing an expression takes time that grows with the square of its length and cannot be stopped meanwhile.
constexpr qsizetype kLongestExpression = 4000;

/// Words and operators of an expression. Chosen: the snippet of one page takes time that grows with the
/// square of the phrases found in it and cannot be stopped meanwhile. Measured on pages of 500 words, with
/// a prefix that matches many of them: a tenth of a second with 64 copies, half a minute with 500.
constexpr qsizetype kMostWords = 64;

/// How long one search may keep the database thread from all else; what takes longer has far too many
/// matches to be of use.
constexpr std::chrono::seconds kLongestSearch{10};

/// How many words an expression has at most, its operators and distances included: a quoted word may well be
/// several to the index.
qsizetype wordCount(const QString &expression)
{
    qsizetype count = 0;
    bool isInWord = false;
    for (const char32_t character : expression.toStdU32String()) {
        const bool wasInWord = std::exchange(isInWord, isAlphanumeric(character));
        count += isInWord && !wasInWord;
    }
    return count;
}

Result<void> verifyLength(const QString &expression)
{
    if (expression.size() > kLongestExpression || wordCount(expression) > kMostWords)
        return Error{QStringLiteral("NativeSearchService"), 1, QStringLiteral("the query is too long"), {}};
    return {};
}

Result<QList<Row>> rankedPages(Database &database, const QString &expression)
{
    if (const auto verified = verifyLength(expression); !verified)
        return verified.error();
    return database.queryRanked(kLongestSearch, kRankedPages, expression);
}

Result<QList<Row>> pagesOfPaper(Database &database, const QString &paperId, const QString &expression)
{
    if (const auto verified = verifyLength(expression); !verified)
        return verified.error();
    return queryPagesOf(database, paperId, [&] {
        return database.queryWithin(kLongestSearch, kPagesOfPaper, {paperId, expression});
    });
}

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
    hits.rows = rowsOrLog(rankedPages(database, expression), QStringLiteral("FTS query"), expression);
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
    // Grouping runs on the database thread right after the operation, or here if that is over already. It
    // handles 50 rows at most, so it holds nobody up. A pool thread would be no better place: once every
    // thread of the pool is a worker that blocks in result(), none would be left to group what they wait for.
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
        const auto rows = pagesOfPaper(database, paperId, expression);
        return passagesIn(rowsOrLog(rows, QStringLiteral("in-paper FTS query"), expression));
    });
}
