#include "store/Statement.h"

#include <cstring>
#include <sqlite3.h>
#include <type_traits>

Error latestError(sqlite3 *connection)
{
    return {QStringLiteral("DatabaseManager"),
            sqlite3_errcode(connection),
            QString::fromUtf8(sqlite3_errmsg(connection)),
            {}};
}

void Statement::Finalizer::operator()(sqlite3_stmt *statement) const
{
    sqlite3_finalize(statement);
}

Statement::Statement(sqlite3 *connection, sqlite3_stmt *statement)
    : m_connection(connection)
    , m_statement(statement)
{
}

Result<Statement> Statement::prepare(sqlite3 *connection, const QString &sql)
{
    sqlite3_stmt *prepared = nullptr;
    const int code = sqlite3_prepare_v2(connection, sql.toUtf8().constData(), -1, &prepared, nullptr);
    Statement statement(connection, prepared);
    if (code != SQLITE_OK)
        return latestError(connection);
    return statement;
}

bool Statement::bindText(int position, const QByteArray &utf8)
{
    const size_t length = strnlen(utf8.constData(), static_cast<size_t>(utf8.size()));
    return sqlite3_bind_text64(m_statement.get(), position, utf8.constData(), length, SQLITE_TRANSIENT,
                               SQLITE_UTF8) == SQLITE_OK;
}

bool Statement::bindInteger(int position, qint64 value)
{
    return sqlite3_bind_int64(m_statement.get(), position, value) == SQLITE_OK;
}

bool Statement::bindReal(int position, double value)
{
    return sqlite3_bind_double(m_statement.get(), position, value) == SQLITE_OK;
}

bool Statement::bindBlob(int position, const QByteArray &bytes)
{
    // An empty QByteArray still points somewhere, so it binds an empty blob and not NULL.
    return sqlite3_bind_blob64(m_statement.get(), position, bytes.constData(),
                               static_cast<sqlite3_uint64>(bytes.size()), SQLITE_TRANSIENT) == SQLITE_OK;
}

bool Statement::bindNull(int position)
{
    return sqlite3_bind_null(m_statement.get(), position) == SQLITE_OK;
}

bool Statement::bind(int position, const SqlValue &value)
{
    return std::visit(
        [this, position](const auto &typed) {
            using Type = std::decay_t<decltype(typed)>;
            if constexpr (std::is_same_v<Type, QString>)
                return bindText(position, typed.toUtf8());
            else if constexpr (std::is_same_v<Type, qint64>)
                return bindInteger(position, typed);
            else if constexpr (std::is_same_v<Type, double>)
                return bindReal(position, typed);
            else if constexpr (std::is_same_v<Type, QByteArray>)
                return bindBlob(position, typed);
            else
                return bindNull(position);
        },
        value);
}

bool Statement::bindAll(const SqlValues &values)
{
    for (int i = 0; i < values.size(); ++i) {
        if (!bind(i + 1, values[i]))
            return false;
    }
    return true;
}

Statement::Step Statement::step()
{
    switch (sqlite3_step(m_statement.get())) {
    case SQLITE_ROW:
        return Step::Row;
    case SQLITE_DONE:
        return Step::Done;
    default:
        return Step::Failed;
    }
}

void Statement::reset()
{
    sqlite3_reset(m_statement.get());
    sqlite3_clear_bindings(m_statement.get());
}

Error Statement::error() const
{
    Error error = latestError(m_connection);
    // Blank text prepares to no statement at all; using that fails without leaving a trace on the connection.
    if (error.code == SQLITE_OK) {
        error.code = SQLITE_MISUSE;
        error.description = QString::fromUtf8(sqlite3_errstr(SQLITE_MISUSE));
    }
    return error;
}

int Statement::columnCount() const
{
    return sqlite3_column_count(m_statement.get());
}

QString Statement::columnName(int column) const
{
    return QString::fromUtf8(sqlite3_column_name(m_statement.get(), column));
}

SqlValue Statement::value(int column) const
{
    sqlite3_stmt *row = m_statement.get();
    switch (sqlite3_column_type(row, column)) {
    case SQLITE_INTEGER:
        return qint64(sqlite3_column_int64(row, column));
    case SQLITE_FLOAT:
        return sqlite3_column_double(row, column);
    case SQLITE_TEXT:
        return *text(column);
    case SQLITE_BLOB: {
        const auto *bytes = static_cast<const char *>(sqlite3_column_blob(row, column));
        return QByteArray(bytes, sqlite3_column_bytes(row, column));
    }
    default:
        return {};
    }
}

std::optional<QString> Statement::text(int column) const
{
    const std::optional<QByteArrayView> bytes = utf8(column);
    return bytes ? std::optional(QString::fromUtf8(*bytes)) : std::nullopt;
}

std::optional<qint64> Statement::integer(int column) const
{
    if (column < 0 || sqlite3_column_type(m_statement.get(), column) != SQLITE_INTEGER)
        return {};
    return sqlite3_column_int64(m_statement.get(), column);
}

std::optional<QByteArrayView> Statement::utf8(int column) const
{
    if (column < 0 || sqlite3_column_type(m_statement.get(), column) != SQLITE_TEXT)
        return {};
    const auto *text = reinterpret_cast<const char *>(sqlite3_column_text(m_statement.get(), column));
    return QByteArrayView(text, sqlite3_column_bytes(m_statement.get(), column));
}
