#pragma once

#include "base/Result.h"
#include "store/Chunk.h"
#include "store/Row.h"
#include "store/SqlValue.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <memory>

struct sqlite3;

/// The one SQLite connection and the statements that run on it. Lives on `DatabaseManager`'s thread; only
/// operations given to `DatabaseManager::perform` see it.
///
/// Errors: domain "DatabaseManager", SQLite's code and message; code -1 when the file could not be opened.
class Database
{
public:
    /// Schema version that this program writes; kept in the file's user_version.
    static constexpr int kSchemaVersion = 9;

    /// Opens or creates the file, tunes the connection, migrates and creates the schema. Never fails: when
    /// the file cannot be opened, every later call answers that.
    explicit Database(const QString &path);
    ~Database();
    Database(const Database &) = delete;
    Database &operator=(const Database &) = delete;

    /// Runs one statement that returns no rows, its parameters bound by position.
    Result<void> execute(const QString &sql, const SqlValues &parameters = {});
    /// Runs one statement and collects its rows. A failure in the middle of the rows ends them silently.
    Result<QList<Row>> query(const QString &sql, const SqlValues &parameters = {});

    /// Adds full-text rows. Opens no transaction of its own.
    Result<void> insertChunks(const QString &paperId, const QList<Chunk> &chunks);
    /// Replaces the paper's tags; the first failure stops it and leaves what was written.
    Result<void> replaceTags(const QString &paperId, const QStringList &tags);
    /// Renames a tag everywhere in one transaction, merging it into an existing tag of the new name.
    Result<void> renameTag(const QString &oldName, const QString &newName);
    Result<void> deleteTag(const QString &name);

private:
    struct Closer {
        void operator()(sqlite3 *connection) const;
    };
    std::unique_ptr<sqlite3, Closer> m_connection;
};

/// Runs `body` between "BEGIN TRANSACTION" and "COMMIT"; any failure executes "ROLLBACK" and is passed on.
template <typename Body>
Result<void> inTransaction(Database &database, Body body)
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
