#include "app/ImportFlow.h"

#include "app/RemainingTime.h"
#include "base/Clock.h"
#include "base/Log.h"
#include "platform/Preferences.h"

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <deque>
#include <memory>
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
    explicit FinishedFiles(qsizetype jobs)
        : m_jobs(jobs)
    {
    }

    void put(FinishedFile file)
    {
        {
            const std::lock_guard lock(m_mutex);
            m_files.push_back(std::make_unique<FinishedFile>(std::move(file)));
        }
        m_changed.notify_one();
    }

    /// One of the jobs puts no more.
    void endJob()
    {
        {
            const std::lock_guard lock(m_mutex);
            --m_jobs;
        }
        m_changed.notify_one();
    }

    /// Waits for a file; null when all jobs have ended and all files are taken.
    std::unique_ptr<FinishedFile> take()
    {
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [this] { return !m_files.empty() || m_jobs == 0; });
        if (m_files.empty())
            return nullptr;
        std::unique_ptr<FinishedFile> file = std::move(m_files.front());
        m_files.pop_front();
        return file;
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<std::unique_ptr<FinishedFile>> m_files;
    qsizetype m_jobs;
};

/// One batch while it runs: the jobs take paths in order until none is left or a stop fires.
class Batch
{
public:
    Batch(const QStringList &paths, const ImportFlow::IndexFile &indexFile, const ImportStops &stops)
        : m_paths(paths)
        , m_stops(stops)
        , m_finished(std::min<qsizetype>(kImportJobs, paths.size()))
    {
        const auto jobs = std::min<qsizetype>(kImportJobs, paths.size());
        for (qsizetype job = 0; job < jobs; ++job)
            m_jobs.emplace_back([this, &indexFile] { work(indexFile); });
    }

    /// The next file that is done; null once all jobs have ended.
    std::unique_ptr<FinishedFile> next() { return m_finished.take(); }

    /// The paths that no job has begun; ask when all have ended.
    QStringList notBegun() const { return m_paths.mid(m_begun); }

private:
    void work(const ImportFlow::IndexFile &indexFile)
    {
        while (const QString *path = nextPath())
            m_finished.put({*path, indexOne(indexFile, *path)});
        m_finished.endJob();
    }

    const QString *nextPath()
    {
        const std::lock_guard lock(m_mutex);
        if (m_stops.beginNoMore.stop_requested() || m_stops.abandon.stop_requested())
            return nullptr;
        return m_begun < m_paths.size() ? &m_paths[m_begun++] : nullptr;
    }

    Result<QString> indexOne(const ImportFlow::IndexFile &indexFile, const QString &path) const
    {
        const Result<Paper> paper = indexFile(path, m_stops.abandon);
        return paper ? Result<QString>(paper->id) : Result<QString>(paper.error());
    }

    const QStringList &m_paths;
    const ImportStops &m_stops;
    std::mutex m_mutex;
    qsizetype m_begun = 0; ///< under the mutex
    FinishedFiles m_finished;
    std::vector<std::jthread> m_jobs; // last, so that the jobs end before what they use
};

bool wasAbandoned(const FinishedFile &file)
{
    return !file.paperId && isCancelled(file.paperId.error());
}

void fold(const FinishedFile &file, IndexFilesResponse &response)
{
    if (file.paperId) {
        response.indexed.append(*file.paperId);
        return;
    }
    const QString text = file.paperId.error().message();
    response.errors.insert(file.path, text);
    logLine(QStringLiteral("❌ PDFIndexer ERROR: [%1] %2").arg(file.path, text));
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

ImportOutcome ImportFlow::run(const QStringList &paths, ImportStops stops, const OnProgress &onProgress)
{
    if (paths.isEmpty())
        return {};
    m_preferences.setText(QLatin1String(kLastImportDateKey), toStoredTime(m_clock.now()));
    const auto start = m_clock.elapsed();

    ImportOutcome outcome;
    ImportProgress progress{
        .done = 0, .total = static_cast<int>(paths.size()), .status = {}, .timeEstimate = {}};
    Batch batch(paths, m_indexFile, stops);
    while (const std::unique_ptr<FinishedFile> file = batch.next()) {
        if (wasAbandoned(*file)) {
            outcome.notDone.append(file->path);
            continue;
        }
        fold(*file, outcome.response);
        ++progress.done;
        progress.status = u"Indexed: " + file->path.section(u'/', -1);
        progress.timeEstimate =
            estimate(progress, std::chrono::duration<double>(m_clock.elapsed() - start).count());
        onProgress(progress);
    }
    outcome.notDone += batch.notBegun();
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
