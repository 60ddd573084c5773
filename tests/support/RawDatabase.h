#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>
#include <QStringList>
#include <gtest/gtest.h>
#include <memory>
#include <sqlite3.h>

/// A connection of another program to a database file: makes old files, holds locks, looks at what stands.
class RawDatabase
{
public:
    explicit RawDatabase(const QString &path)
    {
        sqlite3 *opened = nullptr;
        EXPECT_EQ(sqlite3_open(QFile::encodeName(path).constData(), &opened), SQLITE_OK);
        m_connection.reset(opened);
    }

    void run(const char *sql)
    {
        EXPECT_EQ(sqlite3_exec(m_connection.get(), sql, nullptr, nullptr, nullptr), SQLITE_OK)
            << sql << ": " << sqlite3_errmsg(m_connection.get());
    }

    /// The first column of every row; NULL as "NULL".
    QStringList texts(const char *sql)
    {
        QStringList found;
        const auto add = [](void *list, int, char **values, char **) {
            static_cast<QStringList *>(list)->append(QString::fromUtf8(values[0] ? values[0] : "NULL"));
            return 0;
        };
        EXPECT_EQ(sqlite3_exec(m_connection.get(), sql, add, &found, nullptr), SQLITE_OK)
            << sql << ": " << sqlite3_errmsg(m_connection.get());
        return found;
    }
    QString text(const char *sql) { return texts(sql).value(0); }

private:
    struct Closer {
        void operator()(sqlite3 *connection) const { sqlite3_close(connection); }
    };
    std::unique_ptr<sqlite3, Closer> m_connection;
};
