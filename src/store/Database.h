#pragma once

#include "base/Result.h"
#include "store/Chunk.h"
#include "store/DatabaseStartUp.h"
#include "store/Row.h"
#include "store/SqlValue.h"
#include "store/Statement.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <chrono>
#include <memory>

struct sqlite3;
class PageLengths;
class PrefixCounter;

/// The one SQLite connection and the statements that run on it. Lives on `DatabaseManager`'s thread; only
/// operations given to `DatabaseManager::perform` see it.
///
/// Errors: domain "DatabaseManager", SQLite's code and message; the codes below are this class's own.
class Database
{
public:
    /// Schema version that this program writes; kept in the file's user_version.
    static constexpr int kSchemaVersion = 9;
    /// How long a statement waits for another program's lock before it fails with SQLite's "busy".
    static constexpr std::chrono::milliseconds kBusyTimeout{5000};

    static constexpr int kCannotOpen = -1;   ///< there is no connection
    static constexpr int kNewerVersion = -2; ///< only from `verifyUsable`

    /// Opens or creates the file, tunes the connection, migrates and creates the schema. Never fails: when
    /// the file cannot be opened, every later call answers that. Waits for other programs' locks no longer
    /// than `busyTimeout` in all.
    explicit Database(const QString &path, std::chrono::milliseconds busyTimeout = kBusyTimeout);
    ~Database();
    Database(const Database &) = delete;
    Database &operator=(const Database &) = delete;

    /// Runs one statement that returns no rows, its parameters bound by position. Text ends at its first
    /// zero character.
    Result<void> execute(const QString &sql, const SqlValues &parameters = {});
    /// For reading many rows without collecting them; use it before the operation ends.
    Result<Statement> prepare(const QString &sql, const SqlValues &parameters = {});
    /// Runs one statement and collects its rows. A failure before the first row is an error; one in the
    /// middle of the rows ends them silently.
    Result<QList<Row>> query(const QString &sql, const SqlValues &parameters = {});
    /// Like `query`, but a statement that has run for `limit` is ended and fails with SQLite's "interrupted".
    /// Between two steps of the statement, that is; one call of an SQL function is never cut short.
    Result<QList<Row>> queryWithin(std::chrono::milliseconds limit, const QString &sql,
                                   const SqlValues &parameters = {});

    /// Runs, like `queryWithin`, a statement that ranks the rows matching `expression`, which is its one
    /// parameter: prefixes are ranked sooner than by a plain query.
    Result<QList<Row>> queryRanked(std::chrono::milliseconds limit, const QString &sql,
                                   const QString &expression);

    /// Adds full-text rows. Opens no transaction of its own.
    Result<void> insertChunks(const QString &paperId, const QList<Chunk> &chunks);
    /// Replaces the paper's tags; the first failure stops it and leaves what was written. A tag is stored
    /// without horizontal white space at both ends: blanks, tabs and the other Unicode space separators.
    Result<void> replaceTags(const QString &paperId, const QStringList &tags);
    /// Renames a tag everywhere in one transaction, merging it into an existing tag of the new name. The new
    /// name is trimmed as in `replaceTags`, the old one taken as it is; a new name that is then blank or the
    /// old one changes nothing.
    Result<void> renameTag(const QString &oldName, const QString &newName);
    /// Deletes a tag everywhere in one transaction; takes `name` as it is.
    Result<void> deleteTag(const QString &name);

    /// Whether the library can be read, with the file's path in the error's reason when not. Gives a file
    /// that was locked at start-up its missing start-up steps if the lock is gone; waits for no lock then.
    Result<void> verifyUsable();

    /// Whether there is something to do that makes later searches sooner; `doIdleWork` does a slice of it,
    /// a few milliseconds long. For when nothing else is waiting.
    bool hasIdleWork() const;
    void doIdleWork();

private:
    struct Closer {
        void operator()(sqlite3 *connection) const;
    };

    void open();
    void setBusyTimeout(std::chrono::milliseconds timeout);
    Result<void> verifyReadable();
    Error noConnectionError() const;
    Error explained(Error error) const;

    QString m_path;
    std::chrono::milliseconds m_busyTimeout;
    std::unique_ptr<sqlite3, Closer> m_connection;
    // After the connection, which they must not outlive.
    std::unique_ptr<PageLengths> m_pageLengths;
    std::unique_ptr<PrefixCounter> m_prefixCounter;
    QString m_openFailure; ///< SQLite's message; empty when there is a connection
    StartUp m_startUp = StartUp::Complete;
};

/// Runs `body` between "BEGIN TRANSACTION" and "COMMIT"; any failure executes "ROLLBACK" and is passed on.
/// The first statement of `body` should be one that writes: it waits for another program's transaction,
/// whereas a write after a read fails at once if the other program has committed in between.
template <typename Body> Result<void> inTransaction(Database &database, Body body)
{
    if (auto begun = database.execute(QStringLiteral("BEGIN TRANSACTION")); !begun)
        return begun;
    Result<void> done = body();
    if (done)
        done = database.execute(QStringLiteral("COMMIT"));
    if (!done)
        static_cast<void>(database.execute(QStringLiteral("ROLLBACK")).has_value());
    return done;
}
