#pragma once

#include "base/Result.h"

#include <QByteArray>
#include <QUrl>
#include <chrono>
#include <functional>
#include <stop_token>

/// Codes of the errors in the domain "HttpClient".
enum class HttpErrorCode {
    Unavailable = 1, ///< this machine has no library for HTTP
    BadAddress,      ///< not an http or https address
    Unreachable,     ///< no such host, or nobody answers there
    TimedOut,        ///< not complete within the time-out
    TooLarge,        ///< the answer is longer than the client takes
    BadRedirect,     ///< too many redirects, or one to a less safe, unknown or forbidden address
    TransferFailed,  ///< anything else: the connection broke, the certificate is wrong...
    BadStatus,       ///< the server answered something else than what was asked for
};

/// A GET request whose answer is taken piece by piece, as it arrives.
struct HttpStream {
    QUrl url;
    std::chrono::milliseconds timeout; ///< for all of it
    /// For a while in which nothing arrives, give or take a second; 0: none.
    std::chrono::milliseconds stallTimeout{0};
    /// Whether an address may be asked: `url`, and each one that an answer redirects to, before it is.
    std::function<bool(const QUrl &address)> mayAsk;
    /// Takes the next bytes, on the calling thread; its failure ends the transfer.
    std::function<Result<void>(const QByteArray &piece)> take;
};

/// Fetches addresses of the web. Call from any thread.
class HttpClient
{
public:
    virtual ~HttpClient() = default;

    /// The body of the answer to a GET request for `url`, whatever its status code is. Blocks; everything
    /// from the look-up of the name to the last byte has to be done within `timeout`. Fails in the domain
    /// "HttpClient", or with `cancelledError` within a second after `stop` fires.
    virtual Result<QByteArray> fetch(const QUrl &url, std::chrono::milliseconds timeout,
                                     std::stop_token stop = {}) = 0;

    /// Gives `request.take` the body of the answer, byte for byte as the server has it. Blocks like `fetch`
    /// and fails like it; also with BadStatus unless the status is one of success, and with what `take`
    /// failed with. An answer that fails may have been taken in part.
    virtual Result<void> stream(const HttpStream &request, std::stop_token stop = {}) = 0;
};
