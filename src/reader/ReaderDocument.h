#pragma once

#include "base/Result.h"
#include "pdf/PDFDocument.h"

#include <QFuture>
#include <QObject>
#include <QPromise>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>

/// Whether the engine went with a request that failed in this way: it crashed, hung, answered nonsense or
/// cannot be started.
bool isLoss(const Error &error);

/// The document of one reader window. Its engine is asked on a thread of this object's own, one request after
/// another, so that the window never waits for it. Main thread; answers come through futures.
///
/// A request whose stop has fired before its turn is dropped unasked; one in flight is stopped in the engine.
/// Requests of a page on the screen go before those that merely look ahead.
class ReaderDocument : public QObject
{
    Q_OBJECT

public:
    /// Opens the file, with a password where a person has entered one. Called on the document's thread.
    using Open = std::function<Result<std::unique_ptr<PDFDocument>>(const std::optional<QString> &password,
                                                                    std::stop_token stop)>;
    explicit ReaderDocument(Open open, QObject *parent = nullptr);
    /// Stops what is in flight and ends the engine, without waiting for it on the main thread. Every request
    /// that was not answered fails with `cancelledError`.
    ~ReaderDocument() override;

    /// To be called first, again with another password, or after the engine was lost ("Try Again"). Requests
    /// made meanwhile wait for it.
    QFuture<Result<void>> open(const std::optional<QString> &password = {});
    /// Begins what the first `open` without a password then answers for.
    void openAhead();
    bool isOpen() const;
    qint64 pageCount() const; ///< as the document claims, 0 while it is not open

    enum class Priority { Visible, Ahead };
    /// Runs `request(PDFDocument &, std::stop_token)`, which returns some `Result<T>`, on the document's
    /// thread. Fails with `cancelledError` when stopped, and with why the document is not open.
    template <typename Request>
    auto ask(Priority priority, std::stop_token stop, Request request)
        -> QFuture<std::invoke_result_t<Request &, PDFDocument &, std::stop_token>>;

Q_SIGNALS:
    /// The engine crashed, hung or answered nonsense; nothing is answered until it is opened again.
    void lost(const Error &error);

private:
    class Worker;

    /// A request without its type. Its turn comes once, on the document's thread: with the document, or with
    /// the error that keeps it from being asked. Answers the error with which it failed, if it did.
    using Turn = std::function<std::optional<Error>(PDFDocument *document, const Error &refusal,
                                                    std::stop_token stop)>;
    void enqueue(Priority priority, std::stop_token stop, Turn turn);

    std::shared_ptr<Worker> m_worker; ///< shared with its thread, which outlives this object
    std::optional<QFuture<Result<void>>> m_ahead;
};

template <typename Request>
auto ReaderDocument::ask(Priority priority, std::stop_token stop, Request request)
    -> QFuture<std::invoke_result_t<Request &, PDFDocument &, std::stop_token>>
{
    using Answer = std::invoke_result_t<Request &, PDFDocument &, std::stop_token>;
    auto promise = std::make_shared<QPromise<Answer>>();
    QFuture<Answer> future = promise->future();
    promise->start();
    enqueue(priority, std::move(stop),
            [promise, request = std::move(request)](PDFDocument *document, const Error &refusal,
                                                    std::stop_token itsStop) mutable {
                Answer answer = document ? request(*document, itsStop) : Answer(refusal);
                const std::optional<Error> error = answer ? std::nullopt : std::optional(answer.error());
                promise->addResult(std::move(answer));
                promise->finish();
                return error;
            });
    return future;
}
