#pragma once

#include "base/Result.h"
#include "store/Passage.h"
#include "store/SearchResult.h"

#include <QFuture>
#include <QList>
#include <QString>

class DatabaseManager;

/// Ranked full-text search over the library and inside one paper. Stateless; call from any thread.
class NativeSearchService
{
public:
    /// `db` must outlive the service and its futures.
    explicit NativeSearchService(DatabaseManager &db);

    /// The papers that match `query` (free text, see `buildFTSQuery`), best first, each with its passages
    /// best first; at most 50 passages in all. An expression that the index rejects, of more than 4,000
    /// characters or 64 words (operators count), or that takes the index more than ten seconds, is logged
    /// and answers with an empty list; only a failure to read the papers is an error.
    ///
    /// The at most 50 hits are grouped on the database thread, so the answer needs neither an event loop nor
    /// a thread of a pool: any thread but the main one may block on it, and what is attached to it may run
    /// there too.
    QFuture<Result<QList<SearchResult>>> search(const QString &query);

    /// The passages of one paper that match, by page, at most 100. Failures are logged and answer with an
    /// empty list.
    QFuture<Result<QList<Passage>>> searchInPaper(const QString &paperId, const QString &query);

private:
    DatabaseManager &m_db;
};
