#pragma once

#include "base/Result.h"
#include "store/Paper.h"

#include <QStringList>
#include <functional>
#include <stop_token>

class DatabaseManager;
class NativeLibraryService;
class SystemSearchPublisher;

/// How a retag of the whole library stands, or ended.
struct RetagCount {
    int changed = 0; ///< papers whose tags were replaced
    int done = 0;
    int total = 0;

    /// "Retagged 12 of 140 papers."
    QString summary() const;
};

/// Recomputes the topic tags of every paper, one after another.
class RetagFlow
{
public:
    struct Collaborators {
        DatabaseManager &db;
        NativeLibraryService &library;
        SystemSearchPublisher &publisher;
        /// Answers a paper's new complete tag list.
        std::function<QStringList(const Paper &paper, std::stop_token stop)> retagPaper;
    };
    explicit RetagFlow(Collaborators collaborators);

    /// Blocks. Writes only what differs, each paper in a transaction of its own, and keeps
    /// what others do to a paper's tags meanwhile; at the end removes the tag
    /// definitions that no paper uses. The first failure ends it; what was written before stays. Fails with
    /// `cancelledError` between two papers once `stop` fires. `onProgress` runs on the calling thread,
    /// first with nothing done.
    Result<RetagCount> run(std::stop_token stop, const std::function<void(const RetagCount &)> &onProgress);

private:
    Result<bool> retagOne(const Paper &listed, const std::stop_token &stop);

    Collaborators m_with;
};
