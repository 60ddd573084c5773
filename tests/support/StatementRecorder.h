#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <algorithm>
#include <mutex>
#include <sqlite3.h>

/// Writes down the text of every statement that starts on any connection opened while it lives, the
/// full-text index's own statements included. One at a time; must outlive the connections.
class StatementRecorder
{
public:
    StatementRecorder()
    {
        s_current = this;
        sqlite3_auto_extension(entryPoint());
    }
    ~StatementRecorder()
    {
        sqlite3_cancel_auto_extension(entryPoint());
        s_current = nullptr;
    }
    StatementRecorder(const StatementRecorder &) = delete;
    StatementRecorder &operator=(const StatementRecorder &) = delete;

    void clear()
    {
        const std::lock_guard lock(m_mutex);
        m_statements.clear();
    }
    QStringList all() const
    {
        const std::lock_guard lock(m_mutex);
        return m_statements;
    }
    QStringList beginningWith(const QString &head) const
    {
        const QStringList statements = all();
        QStringList found;
        std::copy_if(statements.begin(), statements.end(), std::back_inserter(found),
                     [&head](const QString &sql) { return sql.startsWith(head); });
        return found;
    }

private:
    using EntryPoint = void (*)();

    static int attach(sqlite3 *connection, char **, const void *)
    {
        return sqlite3_trace_v2(connection, SQLITE_TRACE_STMT, note, s_current);
    }
    static EntryPoint entryPoint() { return reinterpret_cast<EntryPoint>(attach); }

    static int note(unsigned, void *recorder, void *, void *sql)
    {
        auto *self = static_cast<StatementRecorder *>(recorder);
        const std::lock_guard lock(self->m_mutex);
        self->m_statements.append(QString::fromUtf8(static_cast<const char *>(sql)));
        return 0;
    }

    static inline StatementRecorder *s_current = nullptr;

    mutable std::mutex m_mutex;
    QStringList m_statements;
};
