#pragma once

#include <QByteArray>
#include <QString>
#include <memory>

struct sqlite3;
struct sqlite3_stmt;

/// The floor of a ranked search: SQLite's own time for the one statement that no such search can do without,
/// on a connection of its own, its rows read and dropped. Any failure ends the program with its message.
class RawSearch
{
public:
    static constexpr char kRankedStatement[] =
        "SELECT paper_id, page_num, snippet(fts_papers, 2, '...', '...', '...', 10) AS "
        "snippet, bm25(fts_papers) AS rank FROM fts_papers WHERE fts_papers MATCH ? "
        "ORDER BY rank LIMIT 50";

    explicit RawSearch(const QString &libraryPath);
    ~RawSearch();
    RawSearch(const RawSearch &) = delete;
    RawSearch &operator=(const RawSearch &) = delete;

    /// Runs the ranked statement for the full-text expression `expression`.
    void run(const QByteArray &expression);
    /// Runs the statement for the pages of one paper.
    void runInPaper(const QByteArray &paperId, const QByteArray &expression);
    /// The number of page rows that match.
    qint64 matches(const QByteArray &expression);
    /// The number of page rows in all.
    qint64 pages();

private:
    struct Closer {
        void operator()(sqlite3 *connection) const;
    };
    void readAll(sqlite3_stmt *statement, const QByteArray &what);
    [[noreturn]] void fail(const QByteArray &what);

    std::unique_ptr<sqlite3, Closer> m_connection;
};
