#pragma once

#include "base/Result.h"
#include "store/IndexFilesResponse.h"
#include "store/Paper.h"

#include <QSet>
#include <QString>
#include <QStringList>
#include <functional>
#include <stop_token>

class Clock;
class Preferences;

/// How many files are indexed at once. Chosen: enough to keep the processor busy while some jobs wait for the
/// book service.
inline constexpr int kImportJobs = 6;

/// How far an import has come, told after each file.
struct ImportProgress {
    int done = 0;
    int total = 0;
    QString status;       ///< "Indexed: " and the file's name
    QString timeEstimate; ///< remaining time; empty until three files are done

    double fraction() const { return total == 0 ? 0 : static_cast<double>(done) / total; }
};

/// The two ways to stop an import.
struct ImportStops {
    std::stop_token beginNoMore; ///< files that are being indexed go on to their end and count
    std::stop_token abandon;     ///< those too are given up, with nothing written
};

/// What became of an import.
struct ImportOutcome {
    IndexFilesResponse response;
    QStringList notDone; ///< paths abandoned, then those not begun, because the import was stopped
};

/// Indexes a batch of files, several at once; one file's failure never stops the others. The command line and
/// the library window import through this one implementation.
class ImportFlow
{
public:
    /// Indexes one file; called from several threads at once.
    using IndexFile = std::function<Result<Paper>(const QString &path, std::stop_token stop)>;
    using OnProgress = std::function<void(const ImportProgress &progress)>;

    /// Everything referred to must outlive the flow.
    ImportFlow(IndexFile indexFile, Preferences &preferences, const Clock &clock);

    /// Blocks until every file is done, or, once one of `stops` fires, until the running jobs have ended.
    /// Notes the start as the date of the last import, unless there is nothing to import; logs each failure.
    /// Calls `onProgress` on the calling thread, for files that were indexed or failed.
    ImportOutcome run(const QStringList &paths, ImportStops stops, const OnProgress &onProgress);

private:
    IndexFile m_indexFile;
    Preferences &m_preferences;
    const Clock &m_clock;
};

/// Those of `candidates` whose path is not in the library yet, each once, in order.
QStringList newPaths(const QStringList &candidates, const QSet<QString> &libraryPaths);
