#include "updates/UpdateCheck.h"

#include "platform/HttpClient.h"
#include "support/UpdateFixture.h"
#include "updates/Appcast.h"
#include "updates/PackageDownload.h"
#include "updates/UpdateError.h"
#include "updates/UpdateTransfers.h"

#include <gtest/gtest.h>

using namespace std::chrono_literals;

namespace
{
class UpdateCheckTest : public testing::Test, public UpdateFixture
{
protected:
    Result<std::optional<AppcastItem>> find(std::stop_token stop = {})
    {
        return findUpdate(http, QUrl(feedAddress()), program, timeouts, stop);
    }
    /// The version found; empty when there is none or the check failed.
    QString found()
    {
        const auto update = find();
        return update && *update ? (*update)->version.text() : QString();
    }
    Error failure(std::stop_token stop = {})
    {
        const auto update = find(stop);
        EXPECT_FALSE(update);
        return update ? Error() : update.error();
    }
    static bool is(const Error &error, UpdateErrorCode code)
    {
        return error.domain == u"Updater" && error.code == static_cast<int>(code);
    }
    static bool is(const Error &error, HttpErrorCode code)
    {
        return error.domain == u"HttpClient" && error.code == static_cast<int>(code);
    }
    void offerAll(const QList<FeedItem> &items)
    {
        QByteArray texts;
        for (const FeedItem &item : items)
            texts += item.text();
        answers["/feed.xml"] = httpAnswer("200 OK", feedOf(texts));
    }

    UpdateTimeouts timeouts;
};
} // namespace

TEST_F(UpdateCheckTest, FindsANewerVersion)
{
    offer({.version = "1.0.1"});
    EXPECT_EQ(found(), u"1.0.1");
}

TEST_F(UpdateCheckTest, FindsNothingInAFeedOfTheSameVersionAndOlderOnes)
{
    offerAll({{.version = "1.0"}, {.version = "0.9.9"}, {.version = "1"}});
    const auto update = find();
    ASSERT_TRUE(update);
    EXPECT_FALSE(*update);
}

TEST_F(UpdateCheckTest, FindsTheNewestWhateverTheOrder)
{
    offerAll({{.version = "1.9"}, {.version = "1.10"}, {.version = "1.2"}});
    EXPECT_EQ(found(), u"1.10");
}

TEST_F(UpdateCheckTest, PassesOverVersionsForNewerSystems)
{
    offerAll({{.version = "3", .more = "<q:minimumSystemVersion>2.100</q:minimumSystemVersion>"},
              {.version = "2", .more = "<q:minimumSystemVersion>2.36</q:minimumSystemVersion>"}});
    EXPECT_EQ(found(), u"2");
}

TEST_F(UpdateCheckTest, PassesOverVersionsForOtherSystems)
{
    const auto forSystem = [](const QByteArray &version, const QByteArray &system) {
        return FeedItem{.version = version, .length = "5\" q:os=\"" + system};
    };
    offerAll({forSystem("3", "windows"), forSystem("2", "linux")});
    EXPECT_EQ(found(), u"2");
}

TEST_F(UpdateCheckTest, RefusesTheNewestVersionWhenItIsNotSigned)
{
    offerAll({{.version = "2"}, {.version = "3", .signature = {}}});
    const Error error = failure();
    EXPECT_TRUE(is(error, UpdateErrorCode::NotSigned));
    EXPECT_TRUE(error.message().contains(u"Version 3"));
}

TEST_F(UpdateCheckTest, RefusesAVersionOfNoLengthAndOfOneTooGreat)
{
    for (const QByteArray &length :
         {QByteArray(), QByteArray("0"), QByteArray::number(kMaxPackageBytes + 1)}) {
        offer({.length = length});
        EXPECT_TRUE(is(failure(), UpdateErrorCode::BadLength)) << length.toStdString();
    }
    offer({.length = QByteArray::number(kMaxPackageBytes)});
    EXPECT_EQ(found(), u"2.0");
}

TEST_F(UpdateCheckTest, OffersNothingThatThisBuildCannotCheck)
{
    program.key.reset();
    offer({});
    const Error error = failure();
    EXPECT_TRUE(is(error, UpdateErrorCode::NoKey));
    EXPECT_TRUE(error.message().contains(u"Version 2.0"));
}

TEST_F(UpdateCheckTest, IsUpToDateWithoutAKeyToo)
{
    program.key.reset();
    offer({.version = "1.0"});
    EXPECT_TRUE(find());
}

TEST_F(UpdateCheckTest, SaysThatTheFeedIsMissing)
{
    const Error error = failure();
    EXPECT_TRUE(is(error, HttpErrorCode::BadStatus));
    EXPECT_TRUE(error.message().contains(feedAddress()));
}

TEST_F(UpdateCheckTest, RefusesAFeedThatIsMalformedOrCut)
{
    answers["/feed.xml"] = httpAnswer("200 OK", feedOf("<item>"));
    EXPECT_TRUE(is(failure(), UpdateErrorCode::BadFeed));
    answers["/feed.xml"] = httpAnswer("200 OK", feedOf(FeedItem{}.text()).chopped(20));
    EXPECT_TRUE(is(failure(), UpdateErrorCode::BadFeed));
    QByteArray torn = httpAnswer("200 OK", feedOf(FeedItem{}.text()));
    answers["/feed.xml"] = torn.chopped(20);
    EXPECT_TRUE(is(failure(), HttpErrorCode::TransferFailed));
}

TEST_F(UpdateCheckTest, RefusesAFeedThatIsTooLong)
{
    answers["/feed.xml"] = httpAnswer("200 OK", QByteArray(kMaxFeedBytes + 1, ' '));
    EXPECT_TRUE(is(failure(), UpdateErrorCode::BadFeed));
}

TEST_F(UpdateCheckTest, FollowsARedirectOnThisMachine)
{
    answers["/feed.xml"] = httpAnswer("302 Found", "", "Location: /moved.xml\r\n");
    answers["/moved.xml"] = httpAnswer("200 OK", feedOf(FeedItem{}.text()));
    EXPECT_EQ(found(), u"2.0");
}

TEST_F(UpdateCheckTest, FollowsNoRedirectToPlainHttpElsewhere)
{
    // An address that is reserved for documentation: asking it would take the time-out, and fail otherwise.
    answers["/feed.xml"] = httpAnswer("302 Found", "", "Location: http://192.0.2.1/feed.xml\r\n");
    const Error error = failure();
    EXPECT_TRUE(is(error, HttpErrorCode::BadRedirect));
    EXPECT_TRUE(error.message().contains(u"http://192.0.2.1/feed.xml"));
}

TEST_F(UpdateCheckTest, AsksNoPlainHttpElsewhere)
{
    const auto update = findUpdate(http, QUrl(u"http://192.0.2.1/feed.xml"_qs), program, timeouts);
    ASSERT_FALSE(update);
    EXPECT_TRUE(is(update.error(), HttpErrorCode::BadAddress));
}

TEST_F(UpdateCheckTest, GivesUpAFeedThatTrickles)
{
    intercept = [](const LoopbackServer::Connection &connection) {
        connection.send("HTTP/1.1 200 OK\r\nContent-Length: 1000000\r\n\r\n");
        while (!connection.isHungUp() && connection.send(" ")) {
        }
        return true;
    };
    timeouts.feed = 200ms;
    EXPECT_TRUE(is(failure(), HttpErrorCode::TimedOut));
}

TEST_F(UpdateCheckTest, GivesUpAFeedThatStalls)
{
    intercept = [](const LoopbackServer::Connection &connection) {
        connection.waitForHangUp();
        return true;
    };
    timeouts.stall = 200ms;
    EXPECT_TRUE(is(failure(), HttpErrorCode::TimedOut));
}

TEST_F(UpdateCheckTest, Stops)
{
    std::stop_source stop;
    intercept = [&](const LoopbackServer::Connection &connection) {
        stop.request_stop();
        connection.waitForHangUp();
        return true;
    };
    EXPECT_TRUE(isCancelled(failure(stop.get_token())));
}

TEST(UpdateAddress, IsSafeOrOnThisMachine)
{
    const auto isAllowed = [](const char *address) {
        return isUpdateAddress(QUrl(QLatin1String(address)));
    };
    EXPECT_TRUE(isAllowed("https://updates.example/feed.xml"));
    EXPECT_TRUE(isAllowed("http://127.0.0.1:8000/feed.xml"));
    EXPECT_TRUE(isAllowed("http://[::1]:8000/feed.xml"));
    EXPECT_TRUE(isAllowed("http://localhost/feed.xml"));
    EXPECT_FALSE(isAllowed("http://updates.example/feed.xml"));
    EXPECT_FALSE(isAllowed("http://127.0.0.1.example/feed.xml"));
    EXPECT_FALSE(isAllowed("http://localhost@updates.example/feed.xml"));
    EXPECT_FALSE(isAllowed("http://192.168.0.1/feed.xml"));
    EXPECT_FALSE(isAllowed("ftp://127.0.0.1/feed.xml"));
    EXPECT_FALSE(isAllowed("file:///feed.xml"));
    EXPECT_FALSE(isAllowed(""));
}

TEST(InstalledProgramOfThisBuild, KnowsItsVersionAndTheSystems)
{
    const InstalledProgram program = InstalledProgram::ofThisBuild(u"0.1.0"_qs);
    EXPECT_EQ(program.version.text(), u"0.1.0");
    EXPECT_GT(program.system, *DottedVersion::fromText(u"2.0"_qs));
}
