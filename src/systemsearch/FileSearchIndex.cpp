#include "systemsearch/FileSearchIndex.h"

#include "systemsearch/ItemFile.h"
#include "systemsearch/ItemWriting.h"

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <stop_token>
#include <thread>

namespace
{

using Change = std::function<Result<void>(SideDatabase &)>;

Result<void> attempt(ItemFile &file, const Change &change)
{
    const Result<SideDatabase *> database = file.forWriting();
    return database ? change(**database) : database.error();
}

std::optional<Error> errorOf(const Result<void> &done)
{
    return done || isCancelled(done.error()) ? std::nullopt : std::optional(done.error());
}

} // namespace

/// The thread, and what it has yet to do.
class FileSearchIndex::Worker
{
public:
    explicit Worker(const QString &path)
        : m_file(path)
    {
    }

    ~Worker()
    {
        {
            const std::lock_guard lock(m_mutex);
            m_isEnding = true;
        }
        m_end.request_stop();
        m_wake.notify_one();
        if (m_thread.joinable())
            m_thread.join();
    }

    Worker(const Worker &) = delete;
    Worker &operator=(const Worker &) = delete;

    std::stop_token stopAtEnd() const { return m_end.get_token(); }

    void add(Change change, Completion completion)
    {
        {
            const std::lock_guard lock(m_mutex);
            m_tasks.push_back({std::move(change), std::move(completion)});
            if (!m_thread.joinable())
                m_thread = std::thread([this] { run(); });
        }
        m_wake.notify_one();
    }

private:
    struct Task {
        Change change;
        Completion completion;
    };

    void run()
    {
        while (std::optional<Task> task = next()) {
            Result<void> done = attempt(m_file, task->change);
            // Thrown away, the file is made anew and has at least this.
            if (!done && m_file.discardIfDamaged(done.error()))
                done = attempt(m_file, task->change);
            task->completion(errorOf(done));
        }
    }

    std::optional<Task> next()
    {
        std::unique_lock lock(m_mutex);
        m_wake.wait(lock, [this] { return m_isEnding || !m_tasks.empty(); });
        if (m_tasks.empty())
            return {};
        Task task = std::move(m_tasks.front());
        m_tasks.pop_front();
        return task;
    }

    ItemFile m_file;
    std::stop_source m_end;
    std::mutex m_mutex;
    std::condition_variable m_wake;
    std::deque<Task> m_tasks;
    bool m_isEnding = false;
    std::thread m_thread;
};

FileSearchIndex::FileSearchIndex(const QString &path)
    : m_worker(std::make_unique<Worker>(path))
{
}

FileSearchIndex::~FileSearchIndex() = default;

void FileSearchIndex::indexItems(const QList<SearchableItem> &items, Completion completion)
{
    m_worker->add([items](SideDatabase &database) { return putItems(database, items); },
                  std::move(completion));
}

void FileSearchIndex::replaceItems(const QList<SearchableItem> &items, Completion completion)
{
    m_worker->add([items, stop = m_worker->stopAtEnd()](
                      SideDatabase &database) { return replaceAllItems(database, items, stop); },
                  std::move(completion));
}

void FileSearchIndex::deleteItems(const QStringList &identifiers, Completion completion)
{
    m_worker->add([identifiers](SideDatabase &database) { return removeItems(database, identifiers); },
                  std::move(completion));
}
