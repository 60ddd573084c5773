#pragma once

#include "base/Result.h"
#include "store/SqlValue.h"
#include "store/Statement.h"

#include <QString>
#include <chrono>
#include <memory>

struct sqlite3;

/// A connection to a SQLite file that is not the library: something that can be thrown away and made again.
/// It brings no schema and tunes nothing. Use from one thread at a time.
///
/// Errors: domain "DatabaseManager", SQLite's code and message, the file's path as the reason.
class SideDatabase
{
public:
    enum class Missing { Create, Fail };

    /// Opens the file; statements wait `busyTimeout` for the locks of other connections. A file that is no
    /// database is noticed by the first statement, not here.
    static Result<SideDatabase> open(const QString &path, Missing missing,
                                     std::chrono::milliseconds busyTimeout);

    /// Runs one statement that returns no rows, or whose rows do not matter.
    Result<void> execute(const QString &sql, const SqlValues &parameters = {});
    /// The statement must not outlive this.
    Result<Statement> prepare(const QString &sql, const SqlValues &parameters = {});
    /// The first column of the first row; 0 when there is none.
    Result<qint64> number(const QString &sql);

    /// `error`, which came from a statement, with the file's path.
    Error explained(Error error) const;

    /// Whether `error` says that the file's content is not what SQLite wrote there.
    static bool isDamage(const Error &error);
    /// Whether `error` says that there is no file, or none that can be opened.
    static bool isUnopenable(const Error &error);

private:
    struct Closer {
        void operator()(sqlite3 *connection) const;
    };

    explicit SideDatabase(const QString &path);

    QString m_path;
    std::unique_ptr<sqlite3, Closer> m_connection;
};
