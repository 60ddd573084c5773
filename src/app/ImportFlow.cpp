#include "app/ImportFlow.h"

#include "app/RemainingTime.h"
#include "base/Clock.h"
#include "base/Log.h"
#include "platform/Preferences.h"

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

namespace
{

struct FinishedFile {
    QString path;
    Result<QString> paperId;
};

/// Hands finished files from the jobs to the one thread that folds them in.
class FinishedFiles
{
public:
    void put(FinishedFile file)
    {
        {
            const std::lock_guard lock(m_mutex);
            m_files.push_back(std::move(file));
        }
        m_arrived.notify_one();
    }

    FinishedFile take()
    {
        std::unique_lock lock(m_mutex);
        m_arrived.wait(lock, [this] { return !m_files.empty(); });
        FinishedFile file = std::move(m_files.front());
        m_files.pop_front();
        return file;
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_arrived;
    std::deque<FinishedFile> m_files;
};

/// One batch while it runs: the jobs take paths in order until none is left.
class Batch
{
public:
    Batch(const QStringList &paths, const ImportFlow::IndexFile &indexFile, const std::stop_token &stop)
        : m_paths(paths)
    {
        const auto jobs = std::min<qsizetype>(kImportJobs, paths.size());
        for (qsizetype job = 0; job < jobs; ++job)
            m_jobs.emplace_back([this, &indexFile, stop] { work(indexFile, stop); });
    }

    FinishedFile next() { return m_finished.take(); }

private:
    void work(const ImportFlow::IndexFile &indexFile, const std::stop_token &stop)
    {
        for (qsizetype at = m_next++; at < m_paths.size(); at = m_next++)
            m_finished.put({m_paths[at], indexOne(indexFile, m_paths[at], stop)});
    }

    static Result<QString> indexOne(const ImportFlow::IndexFile &indexFile, const QString &path,
                                    const std::stop_token &stop)
    {
        if (stop.stop_requested())
            return cancelledError();
        const Result<Paper> paper = indexFile(path, stop);
        return paper ? Result<QString>(paper->id) : Result<QString>(paper.error());
    }

    const QStringList &m_paths;
    std::atomic<qsizetype> m_next = 0;
    FinishedFiles m_finished;
    std::vector<std::jthread> m_jobs; // last, so that the jobs end before what they use
};

void fold(const FinishedFile &file, ImportOutcome &outcome)
{
    if (file.paperId) {
        outcome.response.indexed.append(*file.paperId);
    } else if (isCancelled(file.paperId.error())) {
        outcome.notDone.append(file.path);
    } else {
        const QString text = file.paperId.error().message();
        outcome.response.errors.insert(file.path, text);
        logLine(QStringLiteral("❌ PDFIndexer ERROR: [%1] %2").arg(file.path, text));
    }
}

QString estimate(const ImportProgress &progress, double elapsedSeconds)
{
    // Fewer samples give a wild estimate.
    if (progress.done < 3)
        return {};
    return formatRemainingTime(elapsedSeconds / progress.done * (progress.total - progress.done));
}

} // namespace

ImportFlow::ImportFlow(IndexFile indexFile, Preferences &preferences, const Clock &clock)
    : m_indexFile(std::move(indexFile))
    , m_preferences(preferences)
    , m_clock(clock)
{
}

ImportOutcome ImportFlow::run(const QStringList &paths, std::stop_token stop, const OnProgress &onProgress)
{
    if (paths.isEmpty())
        return {};
    m_preferences.setText(QLatin1String(kLastImportDateKey), toStoredTime(m_clock.now()));
    const auto start = m_clock.elapsed();

    ImportOutcome outcome;
    ImportProgress progress{
        .done = 0, .total = static_cast<int>(paths.size()), .status = {}, .timeEstimate = {}};
    Batch batch(paths, m_indexFile, stop);
    while (progress.done < progress.total) {
        const FinishedFile file = batch.next();
        fold(file, outcome);
        ++progress.done;
        progress.status = u"Indexed: " + file.path.section(u'/', -1);
        progress.timeEstimate =
            estimate(progress, std::chrono::duration<double>(m_clock.elapsed() - start).count());
        onProgress(progress);
    }
    return outcome;
}

QStringList newPaths(const QStringList &candidates, const QSet<QString> &libraryPaths)
{
    QSet<QString> seen = libraryPaths;
    QStringList fresh;
    for (const QString &path : candidates) {
        if (seen.contains(path))
            continue;
        seen.insert(path);
        fresh.append(path);
    }
    return fresh;
}
