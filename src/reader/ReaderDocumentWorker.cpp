#include "reader/ReaderDocumentWorker.h"

ReaderDocument::Worker::Worker(Open open, ReaderDocument *owner)
    : m_open(std::move(open))
    , m_refusal(pdfError(PDFErrorCode::EngineFailed, QStringLiteral("the document is not open")))
    , m_owner(owner)
{
}

void ReaderDocument::Worker::push(Queue queue, Task task)
{
    const std::scoped_lock lock(m_mutex);
    m_tasks[queue].push_back(std::move(task));
    m_wake.notify_one();
}

void ReaderDocument::Worker::enqueue(Priority priority, std::stop_token stop, Turn turn)
{
    push(priority == Priority::Visible ? Visible : Ahead,
         [this, stop = std::move(stop), turn = std::move(turn)] { perform(turn, stop); });
}

QFuture<Result<void>> ReaderDocument::Worker::open(const std::optional<QString> &password)
{
    auto promise = std::make_shared<QPromise<Result<void>>>();
    promise->start();
    push(Openings, [this, promise, password] {
        promise->addResult(openNow(password));
        promise->finish();
    });
    return promise->future();
}

void ReaderDocument::Worker::close()
{
    {
        const std::scoped_lock lock(m_mutex);
        m_owner = nullptr;
        m_wake.notify_one();
    }
    m_end.request_stop();
}

std::optional<qint64> ReaderDocument::Worker::pageCount() const
{
    const std::scoped_lock lock(m_mutex);
    return m_pageCount;
}

void ReaderDocument::Worker::run()
{
    while (const Task task = next())
        task();
    m_document.reset();
}

ReaderDocument::Worker::Task ReaderDocument::Worker::next()
{
    std::unique_lock lock(m_mutex);
    for (;;) {
        for (auto &queue : m_tasks) {
            if (queue.empty())
                continue;
            Task task = std::move(queue.front());
            queue.pop_front();
            return task;
        }
        if (!m_owner)
            return {};
        m_wake.wait(lock);
    }
}

Result<void> ReaderDocument::Worker::openNow(const std::optional<QString> &password)
{
    publish(std::nullopt);
    m_document.reset();
    Result<std::unique_ptr<PDFDocument>> opened =
        m_end.stop_requested() ? cancelledError() : m_open(password, m_end.get_token());
    if (!opened) {
        m_refusal = opened.error();
        return opened.error();
    }
    m_document = *std::move(opened);
    publish(m_document->pageCount());
    return {};
}

void ReaderDocument::Worker::perform(const Turn &turn, const std::stop_token &wanted)
{
    std::stop_source stop;
    const auto stopIt = [&stop] {
        stop.request_stop();
    };
    const std::stop_callback whenUnwanted(wanted, stopIt);
    const std::stop_callback whenClosed(m_end.get_token(), stopIt);
    if (stop.stop_requested()) {
        static_cast<void>(turn(nullptr, cancelledError(), {}));
        return;
    }
    const std::optional<Error> error = turn(m_document.get(), m_refusal, stop.get_token());
    if (!error || !m_document)
        return;
    if (isCancelled(*error))
        repairAfterStop();
    else if (isEngineLoss(*error))
        lose(*error);
}

// An engine that did not heed the stop was ended for it, which is no fault of the document.
void ReaderDocument::Worker::repairAfterStop()
{
    if (m_end.stop_requested())
        return;
    if (const Result<void> well = m_document->restart(m_end.get_token()); !well)
        lose(well.error());
}

void ReaderDocument::Worker::lose(const Error &error)
{
    m_document.reset();
    m_refusal = error;
    publish(std::nullopt);
    const std::scoped_lock lock(m_mutex);
    if (!m_owner)
        return;
    // Queued: what is posted to the owner goes with it.
    QMetaObject::invokeMethod(
        m_owner, [owner = m_owner, error] { Q_EMIT owner->lost(error); }, Qt::QueuedConnection);
}

void ReaderDocument::Worker::publish(std::optional<qint64> pageCount)
{
    const std::scoped_lock lock(m_mutex);
    m_pageCount = pageCount;
}
