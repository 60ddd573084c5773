// Updates in the program as it is started, with a feed on this machine.
#include "desktop/DesktopProcessFixture.h"
#include "platform/Preferences.h"
#include "support/FeedText.h"
#include "support/LoopbackServer.h"

#include <future>

namespace
{
class UpdateProcessTest : public DesktopProcessFixture
{
protected:
    UpdateProcessTest()
    {
        program.setEnvironment(QStringLiteral("no_proxy"), QStringLiteral("*"));
        qputenv("XDG_CONFIG_HOME", m_home.path(QStringLiteral("config")).toLocal8Bit());
    }

    /// Starts the program with this server as its feed and asks for a check.
    void checkAt(const LoopbackServer &server)
    {
        Preferences().setText(QStringLiteral("QuirevaultUpdateFeedURL"),
                              server.address(QStringLiteral("/feed.xml")));
        startAndWait(program);
        runCommand(QStringLiteral("check-for-updates"));
    }

    DesktopProcess program{m_home, m_bus.address()};
};
} // namespace

TEST_F(UpdateProcessTest, LooksAtTheFeedThatThePreferencesName)
{
    std::promise<QByteArray> asked;
    const LoopbackServer server([&](const LoopbackServer::Connection &connection) {
        asked.set_value(connection.request());
        connection.send(httpAnswer("200 OK", feedOf(FeedItem{.version = "0.0.1"}.text())));
    });
    checkAt(server);
    const QByteArray request = asked.get_future().get();
    EXPECT_TRUE(request.startsWith("GET /feed.xml HTTP/1.1\r\n"));
    EXPECT_TRUE(request.contains("User-Agent: Quirevault\r\n")) << "and nothing that tells who asks";
    EXPECT_FALSE(request.contains("Cookie") || request.contains("Referer"));
    quit(program);
    EXPECT_TRUE(Preferences().text(QStringLiteral("lastUpdateCheckDate")));
}

TEST_F(UpdateProcessTest, EndsWhileItWaitsForAServerThatDoesNotAnswer)
{
    std::promise<void> asked;
    const LoopbackServer server([&](const LoopbackServer::Connection &connection) {
        asked.set_value();
        connection.waitForHangUp();
    });
    checkAt(server);
    asked.get_future().wait();
    quit(program);
}

TEST_F(UpdateProcessTest, StartsNoCheckWithoutAnAddress)
{
    startAndWait(program);
    EXPECT_EQ(runCommand(QStringLiteral("check-for-updates")).type(), QDBusMessage::ReplyMessage);
    quit(program);
    EXPECT_FALSE(Preferences().text(QStringLiteral("lastUpdateCheckDate")));
}
