#pragma once

#include "base/Result.h"
#include "store/SqlValue.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <memory>
#include <optional>

struct sqlite3;
struct sqlite3_stmt;

/// The connection's latest failure: domain "DatabaseManager", SQLite's code and message. Ask before the next
/// call on the connection replaces it.
Error latestError(sqlite3 *connection);

/// A prepared statement, finalized with the object. Use on the connection's thread; must not outlive the
/// connection. Positions of parameters count from 1, columns from 0, as in SQLite.
class Statement
{
public:
    enum class Step { Row, Done, Failed };

    static Result<Statement> prepare(sqlite3 *connection, const QString &sql);

    /// Each answers whether SQLite took the value; `error()` says why not.
    /// Text ends at its first zero character.
    bool bindText(int position, const QByteArray &utf8);
    bool bindInteger(int position, qint64 value);
    bool bindReal(int position, double value);
    bool bindBlob(int position, const QByteArray &bytes);
    bool bindNull(int position);
    bool bind(int position, const SqlValue &value);
    /// Binds all values, the first at position 1.
    bool bindAll(const SqlValues &values);

    Step step();
    /// Makes the statement ready to run again, its parameters NULL.
    void reset();
    /// What the latest call that failed says.
    Error error() const;

    int columnCount() const;
    QString columnName(int column) const;
    /// The column of the current row; NULL as std::monostate.
    SqlValue value(int column) const;

    // The column of the current row when it has this type; a negative number is a column that does not exist.
    std::optional<QString> text(int column) const;
    std::optional<qint64> integer(int column) const;
    /// Text as it is stored, until the next step.
    std::optional<QByteArrayView> utf8(int column) const;

private:
    struct Finalizer {
        void operator()(sqlite3_stmt *statement) const;
    };

    Statement(sqlite3 *connection, sqlite3_stmt *statement);

    sqlite3 *m_connection;
    std::unique_ptr<sqlite3_stmt, Finalizer> m_statement;
};
