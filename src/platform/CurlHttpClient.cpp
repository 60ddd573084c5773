#include "platform/CurlHttpClient.h"

#include "platform/CurlLibrary.h"

#include <algorithm>
#include <array>
#include <memory>

namespace
{
using Clock = std::chrono::steady_clock;

Error httpError(HttpErrorCode code, const QString &description, const QString &reason = {})
{
    return {QStringLiteral("HttpClient"), static_cast<int>(code), description, reason};
}

Error tooLarge()
{
    return httpError(HttpErrorCode::TooLarge, QStringLiteral("The answer is too long"));
}

bool isWebAddress(const QUrl &url)
{
    return url.isValid() && !url.host().isEmpty() && (url.scheme() == u"http" || url.scheme() == u"https");
}

/// What is asked of one request.
struct TransferOptions {
    std::chrono::milliseconds timeout;
    std::chrono::milliseconds stallTimeout{0};
    bool isDecoded = true;    ///< whether the server may compress the answer on its way
    bool mustSucceed = false; ///< whether only an answer with a status of success is one
};

/// One request and its answer.
class Transfer
{
public:
    using Take = std::function<Result<void>(const QByteArray &piece)>;

    Transfer(const CurlLibrary &curl, const TransferOptions &options, std::stop_token stop, Take take)
        : m_curl(curl)
        , m_options(options)
        , m_stop(std::move(stop))
        , m_take(std::move(take))
        , m_handle(curl.easyInit(), curl.cleanUp)
    {
    }

    /// Where the answer sends its reader; empty when it is the answer itself.
    Result<QUrl> run(const QUrl &url);

private:
    template <typename Value> void set(CURLoption option, Value value)
    {
        m_curl.setOption(m_handle.get(), option, value);
    }
    void setUp(const QByteArray &address);
    QUrl redirect() const;
    bool hasSucceeded() const { return status() / 100 == 2; }
    long status() const;
    Error errorFor(CURLcode code) const;
    QString reasonFor(CURLcode code) const;
    Result<void> takePiece(const QByteArray &piece);

    static size_t takeBody(char *data, size_t size, size_t count, void *self);
    bool hasStalled(curl_off_t receivedBytes);
    static int checkProgress(void *self, curl_off_t, curl_off_t receivedBytes, curl_off_t, curl_off_t);

    const CurlLibrary &m_curl;
    TransferOptions m_options;
    std::stop_token m_stop;
    Take m_take;
    std::unique_ptr<CURL, decltype(&::curl_easy_cleanup)> m_handle;
    std::array<char, CURL_ERROR_SIZE> m_reason{};
    curl_off_t m_receivedBytes = 0;
    Clock::time_point m_lastArrival = Clock::now();
    qsizetype m_ignoredBytes = 0;
    Result<void> m_taken; ///< what taking the body came to
};

void Transfer::setUp(const QByteArray &address)
{
    set(CURLOPT_URL, address.constData());
    set(CURLOPT_PROTOCOLS_STR, "http,https");
    set(CURLOPT_NOSIGNAL, 1L);
    // At least 1 ms, since 0 means no limit. Without "quick exit" a name server that does not answer would
    // hold the call long past the time-out.
    set(CURLOPT_TIMEOUT_MS, static_cast<long>(std::max<qint64>(1, m_options.timeout.count())));
    set(CURLOPT_QUICK_EXIT, 1L);
    if (m_options.isDecoded)
        set(CURLOPT_ACCEPT_ENCODING, "");
    set(CURLOPT_USERAGENT, "Quirevault");
    set(CURLOPT_ERRORBUFFER, m_reason.data());
    set(CURLOPT_WRITEFUNCTION, &Transfer::takeBody);
    set(CURLOPT_WRITEDATA, static_cast<void *>(this));
    set(CURLOPT_NOPROGRESS, 0L);
    set(CURLOPT_XFERINFOFUNCTION, &Transfer::checkProgress);
    set(CURLOPT_XFERINFODATA, static_cast<void *>(this));
}

Result<QUrl> Transfer::run(const QUrl &url)
{
    if (!m_handle)
        return httpError(HttpErrorCode::Unavailable, QStringLiteral("The HTTP library could not be started"));
    const QByteArray address = url.toEncoded(QUrl::RemoveFragment);
    setUp(address);
    const CURLcode code = m_curl.perform(m_handle.get());
    if (code != CURLE_OK)
        return errorFor(code);
    QUrl next = redirect();
    if (next.isEmpty() && m_options.mustSucceed && !hasSucceeded())
        return httpError(HttpErrorCode::BadStatus, QStringLiteral("The server does not have it"),
                         QStringLiteral("status %1 of %2").arg(status()).arg(url.toDisplayString()));
    return next;
}

QUrl Transfer::redirect() const
{
    const char *address = nullptr;
    m_curl.information(m_handle.get(), CURLINFO_REDIRECT_URL, &address);
    return address ? QUrl::fromEncoded(address) : QUrl();
}

long Transfer::status() const
{
    long status = 0;
    m_curl.information(m_handle.get(), CURLINFO_RESPONSE_CODE, &status);
    return status;
}

QString Transfer::reasonFor(CURLcode code) const
{
    return QString::fromUtf8(m_reason[0] != '\0' ? m_reason.data() : m_curl.describe(code));
}

Error Transfer::errorFor(CURLcode code) const
{
    if (!m_taken)
        return m_taken.error();
    switch (code) {
    case CURLE_ABORTED_BY_CALLBACK:
        if (m_stop.stop_requested())
            return cancelledError();
        [[fallthrough]]; // it stalled
    case CURLE_OPERATION_TIMEDOUT:
        return httpError(HttpErrorCode::TimedOut, QStringLiteral("The request timed out"));
    case CURLE_COULDNT_CONNECT:
    case CURLE_COULDNT_RESOLVE_HOST:
    case CURLE_COULDNT_RESOLVE_PROXY:
        return httpError(HttpErrorCode::Unreachable, QStringLiteral("The server cannot be reached"),
                         reasonFor(code));
    default:
        return httpError(HttpErrorCode::TransferFailed, QStringLiteral("The request failed"),
                         reasonFor(code));
    }
}

Result<void> Transfer::takePiece(const QByteArray &piece)
{
    if (!m_options.mustSucceed || hasSucceeded())
        return m_take(piece);
    // A page that says where to go, or what went wrong.
    m_ignoredBytes += piece.size();
    return m_ignoredBytes <= CurlHttpClient::kMaxAnswerBytes ? Result<void>() : tooLarge();
}

size_t Transfer::takeBody(char *data, size_t size, size_t count, void *self)
{
    auto &transfer = *static_cast<Transfer *>(self);
    transfer.m_taken = transfer.takePiece(QByteArray(data, static_cast<qsizetype>(size * count)));
    return transfer.m_taken ? size * count : 0; // a count other than the one offered ends the transfer
}

bool Transfer::hasStalled(curl_off_t receivedBytes)
{
    const auto now = Clock::now();
    if (receivedBytes != m_receivedBytes)
        m_lastArrival = now;
    m_receivedBytes = receivedBytes;
    return m_options.stallTimeout.count() > 0 && now - m_lastArrival > m_options.stallTimeout;
}

/// Called often while bytes arrive, and about once a second while none do. Not 0 ends the transfer.
int Transfer::checkProgress(void *self, curl_off_t, curl_off_t receivedBytes, curl_off_t, curl_off_t)
{
    auto &transfer = *static_cast<Transfer *>(self);
    return transfer.m_stop.stop_requested() || transfer.hasStalled(receivedBytes) ? 1 : 0;
}

/// One request and those that its answers send it on to. They are followed here and not by libcurl, which
/// cannot forbid a step by both of its ends.
struct Journey {
    std::function<bool(const QUrl &)> mayAsk;
    std::stop_token stop;
    /// Asks one address within the time and answers where it sends on; empty at the end.
    std::function<Result<QUrl>(const CurlLibrary &, const QUrl &, std::chrono::milliseconds)> ask;

    Result<void> run(const QUrl &url, std::chrono::milliseconds timeout) const;
};

Result<void> Journey::run(const QUrl &url, std::chrono::milliseconds timeout) const
{
    const CurlLibrary *curl = CurlLibrary::loaded();
    if (!curl)
        return httpError(HttpErrorCode::Unavailable, QStringLiteral("The HTTP library is not installed"));
    if (!isWebAddress(url) || !mayAsk(url))
        return httpError(HttpErrorCode::BadAddress, QStringLiteral("Not an address that may be asked"),
                         url.toDisplayString());
    const auto deadline = Clock::now() + timeout;
    QUrl address = url;
    for (int redirects = 0; redirects <= CurlHttpClient::kMaxRedirects; ++redirects) {
        if (stop.stop_requested())
            return cancelledError();
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now());
        const Result<QUrl> next = ask(*curl, address, left);
        if (!next)
            return next.error();
        if (next->isEmpty())
            return {};
        if (!isSafeRedirect(address, *next) || !mayAsk(*next))
            return httpError(HttpErrorCode::BadRedirect, QStringLiteral("The answer is not safe to follow"),
                             next->toDisplayString());
        address = *next;
    }
    return httpError(HttpErrorCode::BadRedirect, QStringLiteral("Too many redirects"), url.toDisplayString());
}

} // namespace

bool isSafeRedirect(const QUrl &from, const QUrl &to)
{
    return isWebAddress(to) && (from.scheme() == u"http" || to.scheme() == u"https");
}

Result<QByteArray> CurlHttpClient::fetch(const QUrl &url, std::chrono::milliseconds timeout,
                                         std::stop_token stop)
{
    QByteArray body;
    const auto take = [&body](const QByteArray &piece) -> Result<void> {
        if (body.size() + piece.size() > kMaxAnswerBytes)
            return tooLarge();
        body.append(piece);
        return {};
    };
    const Journey journey{
        .mayAsk = [](const QUrl &) { return true; },
        .stop = stop,
        .ask =
            [&](const CurlLibrary &curl, const QUrl &address, std::chrono::milliseconds left) {
                body.clear(); // of what was said on the way
                return Transfer(curl, {.timeout = left}, stop, take).run(address);
            }};
    const Result<void> arrival = journey.run(url, timeout);
    return arrival ? Result<QByteArray>(std::move(body)) : arrival.error();
}

Result<void> CurlHttpClient::stream(const HttpStream &request, std::stop_token stop)
{
    const Journey journey{
        .mayAsk = request.mayAsk,
        .stop = stop,
        .ask = [&](const CurlLibrary &curl, const QUrl &address, std::chrono::milliseconds left) {
            const TransferOptions options{.timeout = left,
                                          .stallTimeout = request.stallTimeout,
                                          .isDecoded = false,
                                          .mustSucceed = true};
            return Transfer(curl, options, stop, request.take).run(address);
        }};
    return journey.run(request.url, request.timeout);
}
