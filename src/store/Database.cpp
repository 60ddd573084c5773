#include "store/Database.h"

#include "base/Log.h"
#include "base/TextClasses.h"
#include "store/PageLengths.h"
#include "store/PrefixCounter.h"
#include "store/RankFunction.h"

#include <QDeadlineTimer>
#include <QFile>
#include <sqlite3.h>
#include <utility>

namespace
{
std::shared_ptr<const QStringList> columnNames(const Statement &statement)
{
    auto names = std::make_shared<QStringList>();
    for (int i = 0; i < statement.columnCount(); ++i)
        names->append(statement.columnName(i));
    return names;
}

std::vector<SqlValue> currentValues(const Statement &statement, int count)
{
    std::vector<SqlValue> values;
    values.reserve(static_cast<size_t>(count));
    for (int i = 0; i < count; ++i)
        values.push_back(statement.value(i));
    return values;
}

/// Steps of SQLite's machine between two looks at the clock: some rows of a search, well under a second of
/// the slowest.
constexpr int kStepsBetweenLooks = 100;

/// Ends what the connection runs once the time is over, for as long as this lives.
class TimeLimit
{
public:
    TimeLimit(sqlite3 *connection, std::chrono::milliseconds limit)
        : m_connection(connection)
        , m_deadline(limit)
    {
        sqlite3_progress_handler(m_connection, kStepsBetweenLooks, isOver, &m_deadline);
    }
    ~TimeLimit() { sqlite3_progress_handler(m_connection, 0, nullptr, nullptr); }
    TimeLimit(const TimeLimit &) = delete;
    TimeLimit &operator=(const TimeLimit &) = delete;

private:
    static int isOver(void *deadline) { return static_cast<QDeadlineTimer *>(deadline)->hasExpired(); }

    sqlite3 *m_connection;
    QDeadlineTimer m_deadline;
};
} // namespace

void Database::Closer::operator()(sqlite3 *connection) const
{
    sqlite3_close(connection);
}

Database::Database(const QString &path, std::chrono::milliseconds busyTimeout)
    : m_path(path)
    , m_busyTimeout(busyTimeout)
{
    open();
    if (!m_connection)
        return;
    m_startUp = startUp(m_connection.get(), m_busyTimeout);
    setBusyTimeout(m_busyTimeout);
    m_pageLengths = std::make_unique<PageLengths>(m_connection.get());
    m_prefixCounter = std::make_unique<PrefixCounter>(m_connection.get());
    // Without it searches are slower and rank the same.
    registerRankFunction(m_connection.get(), *m_pageLengths, *m_prefixCounter);
}

Database::~Database() = default;

void Database::open()
{
    sqlite3 *opened = nullptr;
    // One thread uses the connection, so it needs no lock of its own, which every column read would take.
    constexpr int kMode = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX;
    const int code = sqlite3_open_v2(QFile::encodeName(m_path).constData(), &opened, kMode, nullptr);
    m_connection.reset(opened);
    if (code == SQLITE_OK)
        return;
    m_openFailure = QString::fromUtf8(sqlite3_errmsg(opened));
    logLine(u"DatabaseManager: Error opening database: " + m_openFailure);
    m_connection.reset();
}

void Database::setBusyTimeout(std::chrono::milliseconds timeout)
{
    sqlite3_busy_timeout(m_connection.get(), static_cast<int>(timeout.count()));
}

bool Database::hasIdleWork() const
{
    return m_pageLengths && m_pageLengths->wantsSlice();
}

void Database::doIdleWork()
{
    m_pageLengths->readSlice();
}

Error Database::noConnectionError() const
{
    return {QStringLiteral("DatabaseManager"), kCannotOpen,
            QStringLiteral("The library database could not be opened."),
            QStringLiteral("%1: %2").arg(m_path, m_openFailure)};
}

Result<Statement> Database::prepare(const QString &sql, const SqlValues &parameters)
{
    if (!m_connection)
        return noConnectionError();
    Result<Statement> statement = Statement::prepare(m_connection.get(), sql);
    if (statement && !statement->bindAll(parameters))
        return statement->error();
    return statement;
}

Result<void> Database::execute(const QString &sql, const SqlValues &parameters)
{
    Result<Statement> statement = prepare(sql, parameters);
    if (!statement)
        return statement.error();
    if (statement->step() != Statement::Step::Done)
        return statement->error();
    return {};
}

Result<QList<Row>> Database::query(const QString &sql, const SqlValues &parameters)
{
    Result<Statement> statement = prepare(sql, parameters);
    if (!statement)
        return statement.error();
    const std::shared_ptr<const QStringList> columns = columnNames(*statement);
    const int count = statement->columnCount();
    QList<Row> rows;
    Statement::Step step = statement->step();
    for (; step == Statement::Step::Row; step = statement->step())
        rows.emplaceBack(columns, currentValues(*statement, count));
    if (step == Statement::Step::Failed && rows.isEmpty())
        return statement->error();
    return rows;
}

Result<QList<Row>> Database::queryWithin(std::chrono::milliseconds limit, const QString &sql,
                                         const SqlValues &parameters)
{
    if (!m_connection)
        return noConnectionError();
    const TimeLimit timeLimit(m_connection.get(), limit);
    return query(sql, parameters);
}

Result<QList<Row>> Database::queryRanked(std::chrono::milliseconds limit, const QString &sql,
                                         const QString &expression)
{
    if (!m_connection)
        return noConnectionError();
    const TimeLimit timeLimit(m_connection.get(), limit);
    m_prefixCounter->expand(expression);
    Result<QList<Row>> rows = query(sql, {expression});
    m_prefixCounter->forget();
    return rows;
}

Result<void> Database::insertChunks(const QString &paperId, const QList<Chunk> &chunks)
{
    Result<Statement> insert =
        prepare(QStringLiteral("INSERT INTO fts_papers (paper_id, page_num, content) VALUES (?, ?, ?)"), {});
    if (!insert)
        return insert.error();
    const QByteArray id = paperId.toUtf8();
    for (const Chunk &chunk : chunks) {
        insert->reset();
        const bool isBound = insert->bindText(1, id) &&
                             insert->bindInteger(2, static_cast<qint32>(chunk.pageNum)) &&
                             insert->bindText(3, chunk.text);
        if (!isBound || insert->step() != Statement::Step::Done)
            return insert->error();
    }
    return {};
}

Result<void> Database::replaceTags(const QString &paperId, const QStringList &tags)
{
    if (auto cleared = execute(QStringLiteral("DELETE FROM tags WHERE paper_id = ?"), {paperId}); !cleared)
        return cleared;
    for (const QString &tag : tags) {
        auto added = execute(QStringLiteral("INSERT OR IGNORE INTO tags (paper_id, tag) VALUES (?, ?)"),
                             {paperId, trimmedHorizontally(tag)});
        if (!added)
            return added;
    }
    return {};
}

Result<void> Database::renameTag(const QString &oldName, const QString &newName)
{
    const QString name = trimmedHorizontally(newName);
    if (name.isEmpty() || name == oldName)
        return {};
    const std::pair<QString, SqlValues> statements[] = {
        {QStringLiteral("INSERT OR IGNORE INTO tag_definitions (name) VALUES (?)"), {name}},
        {QStringLiteral("DELETE FROM tag_definitions WHERE name = ?"), {oldName}},
        {QStringLiteral(
             "INSERT OR IGNORE INTO tags (paper_id, tag) SELECT paper_id, ? FROM tags WHERE tag = ?"),
         {name, oldName}},
        {QStringLiteral("DELETE FROM tags WHERE tag = ?"), {oldName}},
    };
    return inTransaction(*this, [&]() -> Result<void> {
        for (const auto &[sql, parameters] : statements) {
            if (auto done = execute(sql, parameters); !done)
                return done;
        }
        return {};
    });
}

Result<void> Database::deleteTag(const QString &name)
{
    return inTransaction(*this, [&]() -> Result<void> {
        auto done = execute(QStringLiteral("DELETE FROM tag_definitions WHERE name = ?"), {name});
        return done ? execute(QStringLiteral("DELETE FROM tags WHERE tag = ?"), {name}) : done;
    });
}
