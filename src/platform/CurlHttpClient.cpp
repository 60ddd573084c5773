#include "platform/CurlHttpClient.h"

#include "platform/CurlLibrary.h"

#include <QUrl>
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

bool isWebAddress(const QUrl &url)
{
    return url.isValid() && !url.host().isEmpty() && (url.scheme() == u"http" || url.scheme() == u"https");
}

/// One request and its answer.
class Transfer
{
public:
    Transfer(const CurlLibrary &curl, std::stop_token stop)
        : m_curl(curl)
        , m_stop(std::move(stop))
        , m_handle(curl.easyInit(), curl.cleanUp)
    {
    }

    Result<QByteArray> run(const QUrl &url, std::chrono::milliseconds timeout);
    /// Where the answer sends its reader; empty when it is the answer itself.
    QUrl redirect() const;

private:
    template <typename Value> void set(CURLoption option, Value value)
    {
        m_curl.setOption(m_handle.get(), option, value);
    }
    void setUp(const QByteArray &address, std::chrono::milliseconds timeout);
    Error errorFor(CURLcode code) const;
    QString reasonFor(CURLcode code) const;

    static size_t takeBody(char *data, size_t size, size_t count, void *self);
    static int checkStop(void *self, curl_off_t, curl_off_t, curl_off_t, curl_off_t);

    const CurlLibrary &m_curl;
    std::stop_token m_stop;
    std::unique_ptr<CURL, decltype(&::curl_easy_cleanup)> m_handle;
    std::array<char, CURL_ERROR_SIZE> m_reason{};
    QByteArray m_body;
    bool m_isTooLarge = false;
};

void Transfer::setUp(const QByteArray &address, std::chrono::milliseconds timeout)
{
    set(CURLOPT_URL, address.constData());
    set(CURLOPT_PROTOCOLS_STR, "http,https");
    set(CURLOPT_NOSIGNAL, 1L);
    // At least 1 ms, since 0 means no limit. Without "quick exit" a name server that does not answer would
    // hold the call long past the time-out.
    set(CURLOPT_TIMEOUT_MS, static_cast<long>(std::max<qint64>(1, timeout.count())));
    set(CURLOPT_QUICK_EXIT, 1L);
    set(CURLOPT_ACCEPT_ENCODING, "");
    set(CURLOPT_USERAGENT, "Quirevault");
    set(CURLOPT_ERRORBUFFER, m_reason.data());
    set(CURLOPT_WRITEFUNCTION, &Transfer::takeBody);
    set(CURLOPT_WRITEDATA, static_cast<void *>(this));
    set(CURLOPT_NOPROGRESS, 0L);
    set(CURLOPT_XFERINFOFUNCTION, &Transfer::checkStop);
    set(CURLOPT_XFERINFODATA, static_cast<void *>(this));
}

Result<QByteArray> Transfer::run(const QUrl &url, std::chrono::milliseconds timeout)
{
    if (!m_handle)
        return httpError(HttpErrorCode::Unavailable, QStringLiteral("The HTTP library could not be started"));
    const QByteArray address = url.toEncoded(QUrl::RemoveFragment);
    setUp(address, timeout);
    const CURLcode code = m_curl.perform(m_handle.get());
    if (code != CURLE_OK)
        return errorFor(code);
    return m_body;
}

QUrl Transfer::redirect() const
{
    const char *address = nullptr;
    m_curl.information(m_handle.get(), CURLINFO_REDIRECT_URL, &address);
    return address ? QUrl::fromEncoded(address) : QUrl();
}

QString Transfer::reasonFor(CURLcode code) const
{
    return QString::fromUtf8(m_reason[0] != '\0' ? m_reason.data() : m_curl.describe(code));
}

Error Transfer::errorFor(CURLcode code) const
{
    if (m_isTooLarge)
        return httpError(HttpErrorCode::TooLarge, QStringLiteral("The answer is too long"));
    switch (code) {
    case CURLE_ABORTED_BY_CALLBACK:
        return cancelledError();
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

size_t Transfer::takeBody(char *data, size_t size, size_t count, void *self)
{
    auto &transfer = *static_cast<Transfer *>(self);
    const auto length = static_cast<qsizetype>(size * count);
    if (transfer.m_body.size() + length > CurlHttpClient::kMaxAnswerBytes) {
        transfer.m_isTooLarge = true;
        return 0; // a count other than the one offered ends the transfer
    }
    transfer.m_body.append(data, length);
    return size * count;
}

int Transfer::checkStop(void *self, curl_off_t, curl_off_t, curl_off_t, curl_off_t)
{
    return static_cast<Transfer *>(self)->m_stop.stop_requested() ? 1 : 0;
}

} // namespace

bool isSafeRedirect(const QUrl &from, const QUrl &to)
{
    return isWebAddress(to) && (from.scheme() == u"http" || to.scheme() == u"https");
}

// Redirects are followed here and not by libcurl, which cannot forbid the step from https to http alone.
Result<QByteArray> CurlHttpClient::fetch(const QUrl &url, std::chrono::milliseconds timeout,
                                         std::stop_token stop)
{
    const CurlLibrary *curl = CurlLibrary::loaded();
    if (!curl)
        return httpError(HttpErrorCode::Unavailable, QStringLiteral("The HTTP library is not installed"));
    if (!isWebAddress(url))
        return httpError(HttpErrorCode::BadAddress, QStringLiteral("Not a web address"),
                         url.toDisplayString());

    const auto deadline = Clock::now() + timeout;
    QUrl address = url;
    for (int redirects = 0; redirects <= kMaxRedirects; ++redirects) {
        if (stop.stop_requested())
            return cancelledError();
        Transfer transfer(*curl, stop);
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now());
        Result<QByteArray> body = transfer.run(address, left);
        const QUrl next = body ? transfer.redirect() : QUrl();
        if (next.isEmpty())
            return body;
        if (!isSafeRedirect(address, next))
            return httpError(HttpErrorCode::BadRedirect, QStringLiteral("The answer is not safe to follow"),
                             next.toDisplayString());
        address = next;
    }
    return httpError(HttpErrorCode::BadRedirect, QStringLiteral("Too many redirects"), url.toDisplayString());
}
