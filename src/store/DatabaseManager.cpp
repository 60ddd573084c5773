#include "store/DatabaseManager.h"

#include <QDir>
#include <QFileInfo>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

/// The thread, the connection that lives on it, and a queue for each urgency.
class DatabaseManager::Worker
{
public:
    explicit Worker(const QString &path)
        : m_thread([this, path] { run(path); })
    {
    }

    ~Worker()
    {
        {
            const std::lock_guard lock(m_mutex);
            m_isStopping = true;
        }
        m_wake.notify_one();
        m_thread.join();
    }

    Worker(const Worker &) = delete;
    Worker &operator=(const Worker &) = delete;

    void enqueue(Urgency urgency, Task task)
    {
        {
            const std::lock_guard lock(m_mutex);
            (urgency == Urgency::PersonWaits ? m_personWaits : m_background).push_back(std::move(task));
        }
        m_wake.notify_one();
    }

private:
    void run(const QString &path)
    {
        if (!awaitFirstTask())
            return;
        QDir().mkpath(QFileInfo(path).absolutePath()); // a failure shows when the file is opened
        Database database(path);
        while (const Task task = next(database))
            task(database);
    }

    /// False when the end comes without one.
    bool awaitFirstTask()
    {
        std::unique_lock lock(m_mutex);
        m_wake.wait(lock, [this] { return isNeeded(); });
        return !m_personWaits.empty() || !m_background.empty();
    }

    /// Waits for the next task; an empty one when all are done and no more may come.
    Task next(Database &database)
    {
        std::unique_lock lock(m_mutex);
        while (!isNeeded() && database.hasIdleWork()) {
            lock.unlock();
            database.doIdleWork();
            lock.lock();
        }
        m_wake.wait(lock, [this] { return isNeeded(); });
        std::deque<Task> &queue = m_personWaits.empty() ? m_background : m_personWaits;
        if (queue.empty())
            return {};
        Task task = std::move(queue.front());
        queue.pop_front();
        return task;
    }

    /// Whether a task waits or the end has come. Under the lock.
    bool isNeeded() const { return m_isStopping || !m_personWaits.empty() || !m_background.empty(); }

    std::mutex m_mutex;
    std::condition_variable m_wake;
    std::deque<Task> m_personWaits;
    std::deque<Task> m_background;
    bool m_isStopping = false;
    std::thread m_thread; // last: it uses everything above from its first moment
};

DatabaseManager::DatabaseManager(const QString &dbPath)
    : m_dbPath(dbPath)
    , m_worker(std::make_unique<Worker>(dbPath))
{
}

DatabaseManager::~DatabaseManager() = default;

void DatabaseManager::enqueue(Urgency urgency, Task task)
{
    m_worker->enqueue(urgency, std::move(task));
}

QFuture<Result<void>> DatabaseManager::execute(const QString &sql, const SqlValues &parameters)
{
    return perform(Urgency::PersonWaits,
                   [sql, parameters](Database &database) { return database.execute(sql, parameters); });
}

QFuture<Result<QList<Row>>> DatabaseManager::query(const QString &sql, const SqlValues &parameters)
{
    return perform(Urgency::PersonWaits,
                   [sql, parameters](Database &database) { return database.query(sql, parameters); });
}

QFuture<Result<void>> DatabaseManager::insertChunks(const QString &paperId, const QList<Chunk> &chunks)
{
    return perform(Urgency::Background,
                   [paperId, chunks](Database &database) { return database.insertChunks(paperId, chunks); });
}

QFuture<Result<void>> DatabaseManager::replaceTags(const QString &paperId, const QStringList &tags)
{
    return perform(Urgency::PersonWaits,
                   [paperId, tags](Database &database) { return database.replaceTags(paperId, tags); });
}

QFuture<Result<void>> DatabaseManager::renameTag(const QString &oldName, const QString &newName)
{
    return perform(Urgency::PersonWaits,
                   [oldName, newName](Database &database) { return database.renameTag(oldName, newName); });
}

QFuture<Result<void>> DatabaseManager::deleteTag(const QString &name)
{
    return perform(Urgency::PersonWaits, [name](Database &database) { return database.deleteTag(name); });
}

QFuture<Result<void>> DatabaseManager::verifyUsable()
{
    return perform(Urgency::PersonWaits, [](Database &database) { return database.verifyUsable(); });
}
