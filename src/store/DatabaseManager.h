#pragma once

#include "base/Result.h"
#include "store/Chunk.h"
#include "store/Database.h"
#include "store/Urgency.h"

#include <QFuture>
#include <QPromise>
#include <functional>
#include <memory>
#include <type_traits>

/// Owns the library's one connection and the one thread that uses it. An operation runs whole on that
/// thread, so nothing slips in between its statements, and answers through a future. Call from any thread;
/// workers may call `.result()` on the answers, the main thread must not.
///
/// An operation never waits behind more than the one that is running and those of its own urgency before it.
class DatabaseManager
{
public:
    /// Starts the thread, which opens `dbPath` for the first operation (its folder is created first). Returns
    /// at once; a file that cannot be opened is logged and makes every operation fail with code -1.
    explicit DatabaseManager(const QString &dbPath);
    /// Finishes every operation already accepted, then closes the connection.
    ~DatabaseManager();

    const QString &dbPath() const { return m_dbPath; }

    /// Runs `operation(Database &)`, which returns some `Result<T>`, on the database thread.
    template <typename Operation>
    auto perform(Urgency urgency, Operation operation)
        -> QFuture<std::invoke_result_t<Operation &, Database &>>;

    // The statement helpers, each an operation of its own.
    QFuture<Result<void>> execute(const QString &sql, const SqlValues &parameters = {});
    QFuture<Result<QList<Row>>> query(const QString &sql, const SqlValues &parameters = {});
    QFuture<Result<void>> insertChunks(const QString &paperId, const QList<Chunk> &chunks);
    QFuture<Result<void>> replaceTags(const QString &paperId, const QStringList &tags);
    QFuture<Result<void>> renameTag(const QString &oldName, const QString &newName);
    QFuture<Result<void>> deleteTag(const QString &name);

    /// Whether the library can be used, with the file's path in the reason when not: it opens, is a
    /// database, is not locked by another program and was not made by a newer version.
    QFuture<Result<void>> verifyUsable();

private:
    using Task = std::function<void(Database &)>;
    class Worker;

    void enqueue(Urgency urgency, Task task);

    QString m_dbPath;
    std::unique_ptr<Worker> m_worker;
};

template <typename Operation>
auto DatabaseManager::perform(Urgency urgency, Operation operation)
    -> QFuture<std::invoke_result_t<Operation &, Database &>>
{
    using Answer = std::invoke_result_t<Operation &, Database &>;
    auto promise = std::make_shared<QPromise<Answer>>();
    QFuture<Answer> future = promise->future();
    promise->start();
    enqueue(urgency, [promise, operation = std::move(operation)](Database &database) mutable {
        promise->addResult(operation(database));
        promise->finish();
    });
    return future;
}
