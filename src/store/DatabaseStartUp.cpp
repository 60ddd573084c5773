#include "store/DatabaseStartUp.h"

#include <QDeadlineTimer>
#include <algorithm>
#include <sqlite3.h>

namespace
{
constexpr const char *kTuning[] = {
    "PRAGMA journal_mode=WAL;",
    "PRAGMA synchronous=NORMAL;",
    "PRAGMA cache_size=10000;",
    "PRAGMA foreign_keys=ON;",
};

constexpr const char *kTables[] = {
    "CREATE TABLE IF NOT EXISTS papers (\n"
    "    id TEXT PRIMARY KEY,\n"
    "    title TEXT,\n"
    "    authors TEXT,\n"
    "    year INTEGER,\n"
    "    filepath TEXT,\n"
    "    cover_path TEXT,\n"
    "    date_indexed TEXT,\n"
    "    page_count INTEGER,\n"
    "    chunk_count INTEGER DEFAULT 0,\n"
    "    content_hash TEXT\n"
    ")",
    "CREATE INDEX IF NOT EXISTS idx_papers_content_hash ON papers(content_hash)",
    "CREATE TABLE IF NOT EXISTS tags (paper_id TEXT, tag TEXT, PRIMARY KEY(paper_id, tag), "
    "FOREIGN KEY(paper_id) REFERENCES papers(id) ON DELETE CASCADE)",
    "CREATE TABLE IF NOT EXISTS tag_definitions (name TEXT PRIMARY KEY)",
    "CREATE TABLE IF NOT EXISTS bookmarks (id TEXT PRIMARY KEY, paper_id TEXT, text TEXT, page INTEGER, "
    "label TEXT, created_at TEXT, FOREIGN KEY(paper_id) REFERENCES papers(id) ON DELETE CASCADE)",
};

constexpr const char *kFullTextTable =
    "CREATE VIRTUAL TABLE IF NOT EXISTS fts_papers USING fts5(paper_id UNINDEXED, page_num UNINDEXED, "
    "content, tokenize='unicode61');";

/// Runs the steps and keeps their waiting within one deadline.
class Steps
{
public:
    Steps(sqlite3 *connection, std::chrono::milliseconds patience)
        : m_connection(connection)
        , m_deadline(patience)
    {
    }

    bool isBlocked() const { return m_isBlocked; }

    void run(const char *sql)
    {
        limitWaiting();
        note(sqlite3_exec(m_connection, sql, nullptr, nullptr, nullptr));
    }

    /// The first column of the first row; 0 when there is none.
    int number(const char *sql)
    {
        limitWaiting();
        sqlite3_stmt *statement = nullptr;
        int answer = 0;
        int code = sqlite3_prepare_v2(m_connection, sql, -1, &statement, nullptr);
        if (code == SQLITE_OK)
            code = sqlite3_step(statement);
        if (code == SQLITE_ROW)
            answer = sqlite3_column_int(statement, 0);
        note(code);
        sqlite3_finalize(statement);
        return answer;
    }

private:
    void limitWaiting()
    {
        sqlite3_busy_timeout(m_connection, static_cast<int>(std::max<qint64>(m_deadline.remainingTime(), 0)));
    }

    void note(int code) { m_isBlocked = m_isBlocked || (code & 0xff) == SQLITE_BUSY; }

    sqlite3 *m_connection;
    QDeadlineTimer m_deadline;
    bool m_isBlocked = false;
};

void migrate(Steps &steps)
{
    // A new file counts as version 0 and passes through every step: adding the column fails because there is
    // no table yet, and the table is created with it afterwards.
    const int version = steps.number("PRAGMA user_version");
    const auto run = [&steps](std::initializer_list<const char *> statements) {
        for (const char *sql : statements) {
            // A lock in the middle must not let the version run ahead of the schema; the next start goes on.
            if (!steps.isBlocked())
                steps.run(sql);
        }
    };
    if (version <= 6)
        run({"CREATE TABLE IF NOT EXISTS tag_definitions (name TEXT PRIMARY KEY);",
             "PRAGMA user_version = 7;"});
    if (version <= 7)
        run({"DROP TABLE IF EXISTS chunks;", "VACUUM;", "PRAGMA user_version = 8;"});
    if (version <= 8)
        run({"ALTER TABLE papers ADD COLUMN content_hash TEXT;", "PRAGMA user_version = 9;"});
}
} // namespace

StartUp startUp(sqlite3 *connection, std::chrono::milliseconds patience)
{
    Steps steps(connection, patience);
    for (const char *sql : kTuning)
        steps.run(sql);
    migrate(steps);
    for (const char *sql : kTables)
        steps.run(sql);
    steps.run(kFullTextTable);
    return steps.isBlocked() ? StartUp::Blocked : StartUp::Complete;
}
