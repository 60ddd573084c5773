#include "platform/CurlHttpClient.h"

#include "support/LoopbackServer.h"
#include "support/Printing.h"

#include <QUrl>
#include <gtest/gtest.h>

using namespace std::chrono_literals;

namespace
{
constexpr auto kAmple = 60s;
constexpr auto kShort = 200ms;

class CurlHttpClientTest : public testing::Test
{
protected:
    // The servers under test are on this machine, whatever proxy the environment names for others.
    void SetUp() override { qputenv("no_proxy", "*"); }

    Result<QByteArray> fetch(const QString &address, std::chrono::milliseconds timeout = kAmple)
    {
        return m_client.fetch(QUrl(address), timeout);
    }
    static bool failedWith(const Result<QByteArray> &answer, HttpErrorCode code)
    {
        return !answer && answer.error().domain == u"HttpClient" &&
               answer.error().code == static_cast<int>(code);
    }

    CurlHttpClient m_client;
};

TEST_F(CurlHttpClientTest, AnswersTheBody)
{
    const LoopbackServer server(httpAnswer("200 OK", "{\"a\":1}"));
    const auto answer =
        fetch(server.address(QStringLiteral("/api/books?bibkeys=ISBN:0306406152&format=json")));
    ASSERT_TRUE(answer) << answer.error().message().toStdString();
    EXPECT_EQ(*answer, "{\"a\":1}");
    EXPECT_EQ(server.requestLines().at(0), "GET /api/books?bibkeys=ISBN:0306406152&format=json HTTP/1.1");
}

TEST_F(CurlHttpClientTest, AnswersTheBodyWhateverTheStatusIs)
{
    const LoopbackServer server(httpAnswer("500 Internal Server Error", "sorry"));
    const auto answer = fetch(server.address());
    ASSERT_TRUE(answer);
    EXPECT_EQ(*answer, "sorry");
}

TEST_F(CurlHttpClientTest, EndsAnAnswerThatTricklesBeyondTheTimeOut)
{
    const LoopbackServer server([](const LoopbackServer::Connection &connection) {
        connection.send("HTTP/1.1 200 OK\r\nContent-Length: 1000000\r\n\r\n");
        while (!connection.isHungUp() && connection.send("x")) {
        }
    });
    EXPECT_TRUE(failedWith(fetch(server.address(), kShort), HttpErrorCode::TimedOut));
}

TEST_F(CurlHttpClientTest, EndsARequestThatNobodyAnswers)
{
    const LoopbackServer server(
        [](const LoopbackServer::Connection &connection) { connection.waitForHangUp(); });
    EXPECT_TRUE(failedWith(fetch(server.address(), kShort), HttpErrorCode::TimedOut));
}

TEST_F(CurlHttpClientTest, RefusesAnAnswerThatIsTooLong)
{
    const LoopbackServer server(httpAnswer("200 OK", QByteArray(CurlHttpClient::kMaxAnswerBytes + 1, 'x')));
    EXPECT_TRUE(failedWith(fetch(server.address()), HttpErrorCode::TooLarge));
}

TEST_F(CurlHttpClientTest, TakesAnAnswerOfTheGreatestLength)
{
    const LoopbackServer server(httpAnswer("200 OK", QByteArray(CurlHttpClient::kMaxAnswerBytes, 'x')));
    const auto answer = fetch(server.address());
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->size(), CurlHttpClient::kMaxAnswerBytes);
}

TEST_F(CurlHttpClientTest, SaysThatNobodyIsThere)
{
    QString address;
    {
        const LoopbackServer server(QByteArray("unused"));
        address = server.address();
    }
    const auto answer = fetch(address);
    EXPECT_TRUE(failedWith(answer, HttpErrorCode::Unreachable));
    EXPECT_FALSE(answer.error().reason.isEmpty());
}

TEST_F(CurlHttpClientTest, SaysThatTheConnectionBroke)
{
    const LoopbackServer server(QByteArray("HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\nabc"));
    EXPECT_TRUE(failedWith(fetch(server.address()), HttpErrorCode::TransferFailed));
}

TEST_F(CurlHttpClientTest, StopsWhileItWaitsForTheAnswer)
{
    std::stop_source stop;
    const LoopbackServer server([&](const LoopbackServer::Connection &connection) {
        stop.request_stop();
        connection.waitForHangUp();
    });
    const auto answer = m_client.fetch(QUrl(server.address()), kAmple, stop.get_token());
    ASSERT_FALSE(answer);
    EXPECT_TRUE(isCancelled(answer.error()));
}

TEST_F(CurlHttpClientTest, AsksNothingOnceStopped)
{
    const LoopbackServer server(httpAnswer("200 OK", "late"));
    std::stop_source stop;
    stop.request_stop();
    const auto answer = m_client.fetch(QUrl(server.address()), kAmple, stop.get_token());
    ASSERT_FALSE(answer);
    EXPECT_TRUE(isCancelled(answer.error()));
    EXPECT_TRUE(server.requestLines().empty());
}

TEST_F(CurlHttpClientTest, FollowsARedirect)
{
    const LoopbackServer server([](const LoopbackServer::Connection &connection) {
        const bool isFirst = connection.request().startsWith("GET /old ");
        connection.send(isFirst ? httpAnswer("302 Found", "moved", "Location: /new\r\n")
                                : httpAnswer("200 OK", "here"));
    });
    const auto answer = fetch(server.address(QStringLiteral("/old")));
    ASSERT_TRUE(answer) << answer.error().message().toStdString();
    EXPECT_EQ(*answer, "here");
}

TEST_F(CurlHttpClientTest, LeavesALoopOfRedirects)
{
    const LoopbackServer server(httpAnswer("302 Found", "", "Location: /again\r\n"));
    EXPECT_TRUE(failedWith(fetch(server.address()), HttpErrorCode::BadRedirect));
    EXPECT_EQ(server.requestLines().size(), CurlHttpClient::kMaxRedirects + 1U);
}

TEST_F(CurlHttpClientTest, FollowsNoRedirectToAFile)
{
    const LoopbackServer server(httpAnswer("302 Found", "", "Location: file:///etc/hostname\r\n"));
    EXPECT_TRUE(failedWith(fetch(server.address()), HttpErrorCode::BadRedirect));
}

TEST_F(CurlHttpClientTest, AsksOnlyWebAddresses)
{
    EXPECT_TRUE(failedWith(fetch(QStringLiteral("file:///etc/hostname")), HttpErrorCode::BadAddress));
    EXPECT_TRUE(failedWith(fetch(QStringLiteral("ftp://127.0.0.1/")), HttpErrorCode::BadAddress));
    EXPECT_TRUE(failedWith(fetch(QStringLiteral("nonsense")), HttpErrorCode::BadAddress));
    EXPECT_TRUE(failedWith(fetch(QString()), HttpErrorCode::BadAddress));
}

TEST_F(CurlHttpClientTest, NeverStepsFromHttpsToHttp)
{
    EXPECT_FALSE(isSafeRedirect(QUrl(QStringLiteral("https://a.example/")),
                                QUrl(QStringLiteral("http://a.example/"))));
    EXPECT_TRUE(isSafeRedirect(QUrl(QStringLiteral("https://a.example/")),
                               QUrl(QStringLiteral("https://b.example/"))));
    EXPECT_TRUE(isSafeRedirect(QUrl(QStringLiteral("http://a.example/")),
                               QUrl(QStringLiteral("https://a.example/"))));
}

/// Streams an answer and keeps what arrives.
class CurlHttpStreamTest : public CurlHttpClientTest
{
protected:
    Result<void> stream(const QString &address, std::stop_token stop = {})
    {
        return m_client.stream(
            {.url = QUrl(address),
             .timeout = timeout,
             .stallTimeout = stallTimeout,
             .mayAsk = [this](const QUrl &url) { return !url.path().startsWith(forbidden); },
             .take =
                 [this](const QByteArray &piece) {
                     return take(piece);
                 }},
            stop);
    }
    static bool failedWith(const Result<void> &done, HttpErrorCode code)
    {
        return !done && done.error().domain == u"HttpClient" && done.error().code == static_cast<int>(code);
    }

    std::chrono::milliseconds timeout = kAmple;
    std::chrono::milliseconds stallTimeout{0};
    QString forbidden = QStringLiteral("/forbidden");
    QByteArray received;
    std::function<Result<void>(const QByteArray &)> take = [this](const QByteArray &piece) {
        received += piece;
        return Result<void>();
    };
};

TEST_F(CurlHttpStreamTest, GivesTheWholeBodyHoweverLong)
{
    const QByteArray body(CurlHttpClient::kMaxAnswerBytes + 1, 'x');
    const LoopbackServer server(httpAnswer("200 OK", body));
    const auto done = stream(server.address());
    ASSERT_TRUE(done) << done.error().message().toStdString();
    EXPECT_TRUE(received == body);
}

TEST_F(CurlHttpStreamTest, GivesTheBytesAsTheServerHasThem)
{
    const LoopbackServer server([](const LoopbackServer::Connection &connection) {
        EXPECT_FALSE(connection.request().toLower().contains("accept-encoding"));
        connection.send(httpAnswer("200 OK", "\x1f\x8b not decoded", "Content-Encoding: gzip\r\n"));
    });
    ASSERT_TRUE(stream(server.address()));
    EXPECT_EQ(received, "\x1f\x8b not decoded");
}

TEST_F(CurlHttpStreamTest, TakesNoPageOfAnErrorForTheAnswer)
{
    const LoopbackServer server(httpAnswer("404 Not Found", "sorry"));
    const auto done = stream(server.address());
    EXPECT_TRUE(failedWith(done, HttpErrorCode::BadStatus));
    EXPECT_TRUE(done.error().message().contains(u"404"));
    EXPECT_EQ(received, "");
}

TEST_F(CurlHttpStreamTest, GivesOnlyTheLastAnswerOfRedirects)
{
    const LoopbackServer server([](const LoopbackServer::Connection &connection) {
        const bool isFirst = connection.request().startsWith("GET /old ");
        connection.send(isFirst ? httpAnswer("302 Found", "moved", "Location: /new\r\n")
                                : httpAnswer("200 OK", "here"));
    });
    ASSERT_TRUE(stream(server.address(QStringLiteral("/old"))));
    EXPECT_EQ(received, "here");
}

TEST_F(CurlHttpStreamTest, AsksNoForbiddenAddress)
{
    const LoopbackServer server(httpAnswer("200 OK", "secret"));
    EXPECT_TRUE(failedWith(stream(server.address(QStringLiteral("/forbidden"))), HttpErrorCode::BadAddress));
    EXPECT_TRUE(server.requestLines().empty());
}

TEST_F(CurlHttpStreamTest, AsksNoForbiddenAddressThatItIsSentTo)
{
    const LoopbackServer server(httpAnswer("302 Found", "", "Location: /forbidden/place\r\n"));
    const auto done = stream(server.address(QStringLiteral("/")));
    EXPECT_TRUE(failedWith(done, HttpErrorCode::BadRedirect));
    EXPECT_TRUE(done.error().message().contains(u"/forbidden/place"));
    EXPECT_EQ(server.requestLines().size(), 1U);
}

TEST_F(CurlHttpStreamTest, FailsWithWhatTakingFailedWith)
{
    const LoopbackServer server(httpAnswer("200 OK", "much"));
    const Error full{QStringLiteral("Test"), 28, QStringLiteral("full"), {}};
    take = [&](const QByteArray &) {
        return Result<void>(full);
    };
    const auto done = stream(server.address());
    ASSERT_FALSE(done);
    EXPECT_EQ(done.error(), full);
}

TEST_F(CurlHttpStreamTest, GivesUpAnAnswerThatStalls)
{
    const LoopbackServer server([](const LoopbackServer::Connection &connection) {
        connection.send("HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\nbegun");
        connection.waitForHangUp();
    });
    stallTimeout = kShort;
    EXPECT_TRUE(failedWith(stream(server.address()), HttpErrorCode::TimedOut));
    EXPECT_EQ(received, "begun");
}

TEST_F(CurlHttpStreamTest, GivesUpAnAnswerThatTricklesBeyondTheTimeOut)
{
    const LoopbackServer server([](const LoopbackServer::Connection &connection) {
        connection.send("HTTP/1.1 200 OK\r\nContent-Length: 1000000\r\n\r\n");
        while (!connection.isHungUp() && connection.send("x")) {
        }
    });
    timeout = kShort;
    EXPECT_TRUE(failedWith(stream(server.address()), HttpErrorCode::TimedOut));
}

TEST_F(CurlHttpStreamTest, StopsInTheMiddle)
{
    std::stop_source stop;
    const LoopbackServer server([&](const LoopbackServer::Connection &connection) {
        connection.send("HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\nbegun");
        stop.request_stop();
        connection.waitForHangUp();
    });
    const auto done = stream(server.address(), stop.get_token());
    ASSERT_FALSE(done);
    EXPECT_TRUE(isCancelled(done.error()));
}
} // namespace
