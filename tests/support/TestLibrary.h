#pragma once

#include "store/BookmarkEvents.h"
#include "store/DatabaseManager.h"
#include "store/NativeLibraryService.h"
#include "store/SystemSearchPublisher.h"
#include "support/Printing.h"
#include "support/StatementRecorder.h"
#include "support/TemporaryFolder.h"

/// Remembers what the store announced.
class RecordingPublisher : public SystemSearchPublisher
{
public:
    void publish(const Paper &paper) override { published.append(paper); }
    void publish(const QList<Paper> &papers) override { published.append(papers); }
    void withdraw(const QString &paperId) override { withdrawn.append(paperId); }

    // Filled on the database thread; read them once the operation's future has answered.
    QList<Paper> published;
    QStringList withdrawn;
};

/// An empty library in a folder of its own, and short ways to fill it.
struct TestLibrary {
    TemporaryFolder folder;
    StatementRecorder statements;
    RecordingPublisher publisher;
    BookmarkEvents bookmarkEvents;
    DatabaseManager db{folder.path(QStringLiteral("library.db"))};
    NativeLibraryService service{db, publisher, bookmarkEvents};

    void run(const QString &sql, const SqlValues &parameters = {})
    {
        const Result<void> done = db.execute(sql, parameters).result();
        EXPECT_TRUE(done.has_value()) << (done ? QString() : done.error().message()).toStdString();
    }

    void addPaper(const QString &id, const QString &title, const QString &authors = {},
                  const SqlValue &year = {})
    {
        run(QStringLiteral("INSERT INTO papers (id, title, authors, year, filepath) VALUES (?, ?, ?, ?, ?)"),
            {id, title, authors, year, QString(u"/papers/" + id + u".pdf")});
    }

    void addPage(const QString &paperId, qint64 page, const QByteArray &text)
    {
        EXPECT_TRUE(db.insertChunks(paperId, {Chunk{.text = text, .pageNum = page, .index = 0}}).result());
    }

    /// How many rows the table holds.
    qint64 count(const QString &table)
    {
        const auto rows = db.query(u"SELECT count(*) AS n FROM " + table).result();
        return rows->first().integer(QLatin1String("n")).value_or(-1);
    }
};

inline QStringList idsOf(const QList<Paper> &papers)
{
    QStringList ids;
    for (const Paper &paper : papers)
        ids.append(paper.id);
    return ids;
}
