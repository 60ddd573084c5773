#pragma once

#include "platform/HttpClient.h"

/// HTTP through libcurl, with the proxy that the environment names.
///
/// libcurl is loaded by the first `fetch`, not linked: starting a program with it costs 8 ms (measured, it
/// brings 26 libraries along), and most commands never speak to the network. A machine without it has no
/// look-ups; everything else works.
class CurlHttpClient : public HttpClient
{
public:
    /// Longest answer that `fetch` takes. Book records have a few kB; chosen with room to spare.
    static constexpr qsizetype kMaxAnswerBytes = 8 * 1024 * 1024;
    /// Redirects followed; never one from https to http. Chosen.
    static constexpr int kMaxRedirects = 5;

    Result<QByteArray> fetch(const QUrl &url, std::chrono::milliseconds timeout,
                             std::stop_token stop = {}) override;
    Result<void> stream(const HttpStream &request, std::stop_token stop = {}) override;
};

/// Whether an answer from `from` may send its reader to `to`: on the web, and never from https to http.
bool isSafeRedirect(const QUrl &from, const QUrl &to);
