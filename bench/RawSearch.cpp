#include "RawSearch.h"

#include <cstdio>
#include <cstdlib>
#include <sqlite3.h>

namespace
{

constexpr char kInPaperStatement[] =
    "SELECT page_num, snippet(fts_papers, 2, '...', '...', '...', 10) AS snippet FROM fts_papers "
    "WHERE paper_id = ?2 AND fts_papers MATCH ?1 ORDER BY page_num ASC LIMIT 100";
constexpr char kCountStatement[] = "SELECT count(*) FROM fts_papers WHERE fts_papers MATCH ?";
constexpr char kPagesStatement[] = "SELECT count(*) FROM fts_papers_docsize";

struct Finalizer {
    void operator()(sqlite3_stmt *statement) const { sqlite3_finalize(statement); }
};
using Statement = std::unique_ptr<sqlite3_stmt, Finalizer>;

Statement prepared(sqlite3 *connection, const char *sql, const QByteArray &expression)
{
    sqlite3_stmt *statement = nullptr;
    if (sqlite3_prepare_v2(connection, sql, -1, &statement, nullptr) == SQLITE_OK)
        sqlite3_bind_text(statement, 1, expression.constData(), static_cast<int>(expression.size()),
                          SQLITE_STATIC);
    return Statement(statement);
}

} // namespace

void RawSearch::Closer::operator()(sqlite3 *connection) const
{
    sqlite3_close(connection);
}

RawSearch::RawSearch(const QString &libraryPath)
{
    sqlite3 *connection = nullptr;
    const int opened = sqlite3_open(libraryPath.toUtf8().constData(), &connection);
    m_connection.reset(connection);
    // The cache that the library's own connection has, or the two would not be measured alike.
    if (opened != SQLITE_OK ||
        sqlite3_exec(connection, "PRAGMA cache_size=10000", nullptr, nullptr, nullptr) != SQLITE_OK)
        fail(libraryPath.toUtf8());
}

RawSearch::~RawSearch() = default;

void RawSearch::run(const QByteArray &expression)
{
    const Statement statement = prepared(m_connection.get(), kRankedStatement, expression);
    readAll(statement.get(), expression);
}

void RawSearch::runInPaper(const QByteArray &paperId, const QByteArray &expression)
{
    const Statement statement = prepared(m_connection.get(), kInPaperStatement, expression);
    sqlite3_bind_text(statement.get(), 2, paperId.constData(), static_cast<int>(paperId.size()),
                      SQLITE_STATIC);
    readAll(statement.get(), expression);
}

void RawSearch::readAll(sqlite3_stmt *statement, const QByteArray &what)
{
    int step = SQLITE_ERROR;
    while (statement && (step = sqlite3_step(statement)) == SQLITE_ROW) {
        for (int column = 0; column < sqlite3_column_count(statement); ++column)
            static_cast<void>(sqlite3_column_text(statement, column));
    }
    if (step != SQLITE_DONE)
        fail(what);
}

qint64 RawSearch::matches(const QByteArray &expression)
{
    const Statement statement = prepared(m_connection.get(), kCountStatement, expression);
    if (!statement || sqlite3_step(statement.get()) != SQLITE_ROW)
        fail(expression);
    return sqlite3_column_int64(statement.get(), 0);
}

qint64 RawSearch::pages()
{
    const Statement statement = prepared(m_connection.get(), kPagesStatement, {});
    if (!statement || sqlite3_step(statement.get()) != SQLITE_ROW)
        fail("fts_papers_docsize");
    return sqlite3_column_int64(statement.get(), 0);
}

void RawSearch::fail(const QByteArray &what)
{
    std::fprintf(stderr, "%s: %s\n", what.constData(), sqlite3_errmsg(m_connection.get()));
    std::exit(1);
}
