#pragma once

#include "reader/ReaderDocument.h"

#include <array>
#include <condition_variable>
#include <deque>
#include <mutex>

/// A document's thread and what waits for it. Lives until its thread has ended.
class ReaderDocument::Worker
{
public:
    Worker(Open open, ReaderDocument *owner);

    // Called by the owner.
    void enqueue(Priority priority, std::stop_token stop, Turn turn);
    QFuture<Result<void>> open(const std::optional<QString> &password);
    /// Lets the thread end. The owner hears nothing any more.
    void close();

    /// Absent while the document is not open. From any thread.
    std::optional<qint64> pageCount() const;

    /// The thread: works until it is told to end, cancels what is left then, and ends the engine.
    void run();

private:
    using Task = std::function<void()>;
    enum Queue { Openings, Visible, Ahead, QueueCount };

    void push(Queue queue, Task task);
    /// The task whose turn it is; none once the thread is to end and nothing is left. Blocks.
    Task next();

    // On the document's thread.
    Result<void> openNow(const std::optional<QString> &password);
    void perform(const Turn &turn, const std::stop_token &wanted);
    void repairAfterStop();
    void lose(const Error &error);
    void publish(std::optional<qint64> pageCount);

    const Open m_open;

    // Of the document's thread alone.
    std::unique_ptr<PDFDocument> m_document;
    Error m_refusal; ///< why there is no document

    mutable std::mutex m_mutex;
    std::condition_variable m_wake;
    std::array<std::deque<Task>, QueueCount> m_tasks; ///< those of a queue before those of the next
    ReaderDocument *m_owner;                          ///< null once it is gone
    std::optional<qint64> m_pageCount;
    std::stop_source m_end;
};
