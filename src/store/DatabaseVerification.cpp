// What `Database` says about a library that cannot be used.
#include "store/Database.h"

#include <sqlite3.h>

Result<void> Database::verifyUsable()
{
    if (!m_connection)
        return noConnectionError();
    if (m_startUp == StartUp::Complete)
        return verifyReadable();
    // Start-up has already waited its full time for the lock. Look once more without waiting again.
    using namespace std::chrono_literals;
    m_startUp = startUp(m_connection.get(), 0ms);
    setBusyTimeout(0ms);
    Result<void> usable = verifyReadable();
    setBusyTimeout(m_busyTimeout);
    return usable;
}

Result<void> Database::verifyReadable()
{
    const auto version = query(QStringLiteral("PRAGMA user_version"));
    if (!version)
        return explained(version.error());
    const qint64 found =
        version->isEmpty() ? 0 : version->first().integer(QLatin1String("user_version")).value_or(0);
    if (found > kSchemaVersion)
        return Error{QStringLiteral("DatabaseManager"), kNewerVersion,
                     QStringLiteral("The library was made by a newer version of this program"),
                     QStringLiteral("%1 has version %2, known is %3")
                         .arg(m_path, QString::number(found), QString::number(kSchemaVersion))};
    // Statements that read no row: preparing and starting them meets whatever stands in the way.
    for (const char *table : {"papers", "tags", "tag_definitions", "bookmarks", "fts_papers"}) {
        const auto read = execute(QStringLiteral("SELECT * FROM %1 LIMIT 0").arg(QLatin1String(table)));
        if (!read)
            return explained(read.error());
    }
    return {};
}

Error Database::explained(Error error) const
{
    QString why = QStringLiteral("%1 cannot be read");
    switch (error.code) {
    case SQLITE_NOTADB:
        why = QStringLiteral("%1 is something else and was left as it is");
        break;
    case SQLITE_BUSY:
        why = QStringLiteral("%1 is in use by another program");
        break;
    case SQLITE_CORRUPT:
        why = QStringLiteral("%1 is damaged");
        break;
    case SQLITE_READONLY:
        why = QStringLiteral("%1 or its folder is read-only");
        break;
    case SQLITE_CANTOPEN:
        why = QStringLiteral("%1 or a file beside it cannot be opened; its folder may be read-only");
        break;
    }
    error.reason = why.arg(m_path);
    return error;
}
