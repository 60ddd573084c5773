#pragma once

#include "base/Result.h"

#include <QByteArray>
#include <chrono>
#include <stop_token>

class QUrl;

/// Codes of the errors in the domain "HttpClient".
enum class HttpErrorCode {
    Unavailable = 1, ///< this machine has no library for HTTP
    BadAddress,      ///< not an http or https address
    Unreachable,     ///< no such host, or nobody answers there
    TimedOut,        ///< not complete within the time-out
    TooLarge,        ///< the answer is longer than the client takes
    BadRedirect,     ///< too many redirects, or one to a less safe or unknown scheme
    TransferFailed,  ///< anything else: the connection broke, the certificate is wrong...
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
};
