#include "store/SideDatabase.h"

#include <QFile>
#include <sqlite3.h>

namespace
{
/// Without the bits in which SQLite says more than which kind of failure it was.
int primaryCode(const Error &error)
{
    return error.code & 0xff;
}
} // namespace

void SideDatabase::Closer::operator()(sqlite3 *connection) const
{
    sqlite3_close(connection);
}

SideDatabase::SideDatabase(const QString &path)
    : m_path(path)
{
}

Result<SideDatabase> SideDatabase::open(const QString &path, Missing missing,
                                        std::chrono::milliseconds busyTimeout)
{
    const int mode =
        SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | (missing == Missing::Create ? SQLITE_OPEN_CREATE : 0);
    SideDatabase database(path);
    sqlite3 *opened = nullptr;
    const int code = sqlite3_open_v2(QFile::encodeName(path).constData(), &opened, mode, nullptr);
    database.m_connection.reset(opened);
    if (code != SQLITE_OK)
        return database.explained(latestError(opened));
    sqlite3_busy_timeout(opened, static_cast<int>(busyTimeout.count()));
    return database;
}

Result<Statement> SideDatabase::prepare(const QString &sql, const SqlValues &parameters)
{
    Result<Statement> statement = Statement::prepare(m_connection.get(), sql);
    if (!statement)
        return explained(statement.error());
    if (!statement->bindAll(parameters))
        return explained(statement->error());
    return statement;
}

Result<void> SideDatabase::execute(const QString &sql, const SqlValues &parameters)
{
    Result<Statement> statement = prepare(sql, parameters);
    if (!statement)
        return statement.error();
    Statement::Step step = statement->step();
    while (step == Statement::Step::Row)
        step = statement->step();
    if (step == Statement::Step::Failed)
        return explained(statement->error());
    return {};
}

Result<qint64> SideDatabase::number(const QString &sql)
{
    Result<Statement> statement = prepare(sql);
    if (!statement)
        return statement.error();
    const Statement::Step step = statement->step();
    if (step == Statement::Step::Failed)
        return explained(statement->error());
    return step == Statement::Step::Row ? statement->integer(0).value_or(0) : 0;
}

Error SideDatabase::explained(Error error) const
{
    error.reason = m_path;
    return error;
}

bool SideDatabase::isDamage(const Error &error)
{
    return primaryCode(error) == SQLITE_CORRUPT || primaryCode(error) == SQLITE_NOTADB;
}

bool SideDatabase::isUnopenable(const Error &error)
{
    return primaryCode(error) == SQLITE_CANTOPEN;
}
