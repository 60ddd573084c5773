#include "app/SingleInstance.h"

#include "platform/Paths.h"
#include "support/Printing.h"
#include "support/PrivateBus.h"

#include <QCoreApplication>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QEventLoop>
#include <gtest/gtest.h>
#include <thread>

namespace
{

const auto kName = QStringLiteral("org.quirevault.Quirevault");

/// What the running program was asked for, and how it may answer.
struct Asked {
    int activations = 0;
    QList<QUrl> files;
    QList<PDFOpenRequest> requests;
    QStringList commands;
    QStringList papers;
    QStringList searches;
    QString token; ///< in use when the last activation came

    SingleInstance::Handlers handlers()
    {
        return {.activate =
                    [this] {
                        ++activations;
                        token = qEnvironmentVariable("XDG_ACTIVATION_TOKEN");
                    },
                .open = [this](const QList<QUrl> &asked) { files = asked; },
                .openReader = [this](const PDFOpenRequest &request) { requests.append(request); },
                .runCommand =
                    [this](const QString &name) {
                        commands.append(name);
                        return name == u"import-pdfs";
                    },
                .openPaper = [this](const QString &id) { papers.append(id); },
                .search =
                    [this](const QString &text) {
                        searches.append(text);
                    }};
    }
};

} // namespace

class SingleInstanceTest : public testing::Test
{
protected:
    ~SingleInstanceTest() override
    {
        for (const QString &name : m_connections)
            QDBusConnection::disconnectFromBus(name);
        qunsetenv("XDG_ACTIVATION_TOKEN");
    }

    QDBusConnection connection(const QString &name)
    {
        m_connections.append(name);
        return QDBusConnection::connectToBus(m_bus.address(), name);
    }

    /// Runs `work` as another program would, while this one answers.
    template <typename Work> void elsewhere(Work work)
    {
        QEventLoop loop;
        std::thread other([&] {
            work();
            QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
        });
        loop.exec();
        other.join();
    }

    /// Another start of the program.
    SingleInstance::Start startElsewhere(const ActivationToken &token = {}, const QString &name = kName,
                                         const QList<PDFOpenRequest> &requests = {})
    {
        auto outcome = SingleInstance::Start::NoAnswer;
        const QDBusConnection bus = connection(QStringLiteral("elsewhere"));
        elsewhere([&] { outcome = SingleInstance(bus, name).start(token, requests); });
        return outcome;
    }

    QDBusMessage call(const QString &method, const QVariantList &arguments)
    {
        QDBusMessage answer;
        const QDBusConnection bus = connection(QStringLiteral("caller"));
        elsewhere([&] {
            QDBusMessage message =
                QDBusMessage::createMethodCall(kName, QStringLiteral("/org/quirevault/Quirevault"),
                                               QStringLiteral("org.freedesktop.Application"), method);
            message.setArguments(arguments);
            answer = bus.call(message);
        });
        return answer;
    }

    void activateAction(const QString &name, const QString &text)
    {
        const QDBusMessage answer = call(QStringLiteral("ActivateAction"),
                                         {name, QVariant::fromValue(QVariantList{text}), QVariantMap()});
        EXPECT_EQ(answer.type(), QDBusMessage::ReplyMessage) << answer.errorMessage().toStdString();
    }

    SingleInstance::Start startServiceElsewhere(const QString &name)
    {
        auto outcome = SingleInstance::Start::NoAnswer;
        const QDBusConnection bus = connection(QStringLiteral("service"));
        elsewhere([&] { outcome = SingleInstance(bus, name).startService(); });
        return outcome;
    }

    PrivateBus m_bus;
    QStringList m_connections;
    Asked m_asked;
    SingleInstance m_first{connection(QStringLiteral("first")), kName};
};

TEST_F(SingleInstanceTest, TheFirstStartIsTheOne)
{
    EXPECT_EQ(m_first.start({}), SingleInstance::Start::First);
}

TEST_F(SingleInstanceTest, ALaterStartBringsTheFirstForward)
{
    m_first.setHandlers(m_asked.handlers());
    ASSERT_EQ(m_first.start({}), SingleInstance::Start::First);
    EXPECT_EQ(startElsewhere(), SingleInstance::Start::HandedOver);
    EXPECT_EQ(m_asked.activations, 1);
}

TEST_F(SingleInstanceTest, ALaterStartPassesItsRightToTheFrontOn)
{
    m_first.setHandlers(m_asked.handlers());
    ASSERT_EQ(m_first.start({}), SingleInstance::Start::First);
    startElsewhere({.wayland = QStringLiteral("token-7"), .x11 = {}});
    EXPECT_EQ(m_asked.token, QStringLiteral("token-7"));
}

TEST_F(SingleInstanceTest, LibrariesInDifferentFoldersDoNotMeet)
{
    ASSERT_EQ(m_first.start({}), SingleInstance::Start::First);
    const QString other = SingleInstance::nameFor(QStringLiteral("/elsewhere/Quirevault"));
    EXPECT_EQ(startElsewhere({}, other), SingleInstance::Start::First);
}

TEST_F(SingleInstanceTest, TheNameIsFreeAgainWhenTheFirstHasEnded)
{
    {
        SingleInstance earlier(connection(QStringLiteral("earlier")), kName);
        ASSERT_EQ(earlier.start({}), SingleInstance::Start::First);
    }
    EXPECT_EQ(m_first.start({}), SingleInstance::Start::First);
}

TEST_F(SingleInstanceTest, TheNameIsFreeOnceItWasGivenBack)
{
    SingleInstance earlier(connection(QStringLiteral("earlier")), kName);
    ASSERT_EQ(earlier.start({}), SingleInstance::Start::First);
    earlier.giveNameBack();
    EXPECT_EQ(m_first.start({}), SingleInstance::Start::First);
}

TEST_F(SingleInstanceTest, SaysSoWhenTheOtherProgramDoesNotSpeakOurLanguage)
{
    QDBusConnection stranger = connection(QStringLiteral("stranger"));
    ASSERT_TRUE(stranger.registerService(kName));
    EXPECT_EQ(startElsewhere(), SingleInstance::Start::NoAnswer);
}

TEST(SingleInstanceWithoutABus, JustRuns)
{
    const QDBusConnection none(QStringLiteral("no such connection"));
    EXPECT_EQ(SingleInstance(none, kName).start({}), SingleInstance::Start::First);
}

TEST_F(SingleInstanceTest, OpensTheFilesThatOthersAskFor)
{
    m_first.setHandlers(m_asked.handlers());
    ASSERT_EQ(m_first.start({}), SingleInstance::Start::First);
    const QDBusMessage answer =
        call(QStringLiteral("Open"), {QStringList{QStringLiteral("file:///a%20b.pdf")}, QVariantMap()});
    EXPECT_EQ(answer.type(), QDBusMessage::ReplyMessage) << answer.errorMessage().toStdString();
    EXPECT_EQ(m_asked.files, QList{QUrl::fromLocalFile(QStringLiteral("/a b.pdf"))});
}

TEST_F(SingleInstanceTest, RunsTheCommandsThatOthersAskFor)
{
    m_first.setHandlers(m_asked.handlers());
    ASSERT_EQ(m_first.start({}), SingleInstance::Start::First);
    const QDBusMessage answer = call(QStringLiteral("ActivateAction"),
                                     {QStringLiteral("import-pdfs"), QVariantList(), QVariantMap()});
    EXPECT_EQ(answer.type(), QDBusMessage::ReplyMessage) << answer.errorMessage().toStdString();
    EXPECT_EQ(m_asked.commands, QStringList{QStringLiteral("import-pdfs")});
}

TEST_F(SingleInstanceTest, ALaterStartHandsItsRequestsOver)
{
    m_first.setHandlers(m_asked.handlers());
    ASSERT_EQ(m_first.start({}), SingleInstance::Start::First);
    const PDFOpenRequest one{.id = QUuid::createUuid(),
                             .url = QUrl::fromLocalFile(QStringLiteral("/ä b.pdf")),
                             .page = 7,
                             .paperId = QStringLiteral("p"),
                             .searchText = QStringLiteral("\"Größe\"")};
    const PDFOpenRequest other{.id = QUuid::createUuid(),
                               .url = QUrl::fromLocalFile(QStringLiteral("/b.pdf"))};
    EXPECT_EQ(startElsewhere({.wayland = QStringLiteral("token-7"), .x11 = {}}, kName, {one, other}),
              SingleInstance::Start::HandedOver);
    EXPECT_EQ(m_asked.requests, (QList{one, other}));
    EXPECT_EQ(m_asked.activations, 0);
    EXPECT_EQ(qEnvironmentVariable("XDG_ACTIVATION_TOKEN"), QStringLiteral("token-7"));
}

TEST_F(SingleInstanceTest, OpensThePaperThatOthersAskForByItsId)
{
    m_first.setHandlers(m_asked.handlers());
    ASSERT_EQ(m_first.start({}), SingleInstance::Start::First);
    activateAction(QStringLiteral("open-paper"), QStringLiteral("0123"));
    EXPECT_EQ(m_asked.papers, QStringList(QStringLiteral("0123")));
    EXPECT_TRUE(m_asked.commands.isEmpty());
}

TEST_F(SingleInstanceTest, SearchesForWhatOthersAskForWithinBounds)
{
    m_first.setHandlers(m_asked.handlers());
    ASSERT_EQ(m_first.start({}), SingleInstance::Start::First);
    activateAction(QStringLiteral("search"), QStringLiteral("knots; $(links)"));
    activateAction(QStringLiteral("search"), QString(100'000, u'x'));
    ASSERT_EQ(m_asked.searches.size(), 2);
    EXPECT_EQ(m_asked.searches[0], QStringLiteral("knots; $(links)"));
    EXPECT_EQ(m_asked.searches[1].size(), 1000);
}

TEST_F(SingleInstanceTest, AStartByTheBusLeavesTheCallToTheProgramThatRuns)
{
    m_first.setHandlers(m_asked.handlers());
    ASSERT_EQ(m_first.start({}), SingleInstance::Start::First);
    EXPECT_EQ(startServiceElsewhere(kName), SingleInstance::Start::HandedOver);
    EXPECT_EQ(m_asked.activations, 0);
}

TEST_F(SingleInstanceTest, AStartByTheBusTakesTheNameThatTheBusWaitsFor)
{
    QDBusConnection bus = connection(QStringLiteral("service"));
    const QString other = SingleInstance::nameFor(QStringLiteral("/elsewhere/Quirevault"));
    {
        SingleInstance service(bus, other);
        EXPECT_EQ(service.startService(), SingleInstance::Start::First);
        EXPECT_TRUE(bus.interface()->isServiceRegistered(other));
        EXPECT_TRUE(bus.interface()->isServiceRegistered(kName));
    }
    EXPECT_FALSE(bus.interface()->isServiceRegistered(kName));
}

TEST_F(SingleInstanceTest, AStartByTheBusBringsAProgramForwardThatTheBusDoesNotKnow)
{
    const QString other = SingleInstance::nameFor(QStringLiteral("/elsewhere/Quirevault"));
    SingleInstance running(connection(QStringLiteral("running")), other);
    running.setHandlers(m_asked.handlers());
    ASSERT_EQ(running.start({}), SingleInstance::Start::First);
    EXPECT_EQ(startServiceElsewhere(other), SingleInstance::Start::HandedOver);
    EXPECT_EQ(m_asked.activations, 1);
}

TEST_F(SingleInstanceTest, RefusesARequestThatIsNone)
{
    m_first.setHandlers(m_asked.handlers());
    ASSERT_EQ(m_first.start({}), SingleInstance::Start::First);
    for (const QVariantList &parameter :
         {QVariantList(), QVariantList{QStringLiteral("{")}, QVariantList{QStringLiteral("{}")},
          QVariantList{
              QStringLiteral(R"({"id":"6FA459EA-EE8A-3CA4-894E-DB77E160355E","url":"https://a"})")}}) {
        const QDBusMessage answer =
            call(QStringLiteral("ActivateAction"),
                 {QStringLiteral("open-request"), QVariant::fromValue(parameter), QVariantMap()});
        EXPECT_EQ(answer.errorName(), QStringLiteral("org.freedesktop.DBus.Error.InvalidArgs"));
    }
    EXPECT_TRUE(m_asked.requests.isEmpty());
}

TEST_F(SingleInstanceTest, RefusesACommandThatItDoesNotHave)
{
    m_first.setHandlers(m_asked.handlers());
    ASSERT_EQ(m_first.start({}), SingleInstance::Start::First);
    const QDBusMessage answer =
        call(QStringLiteral("ActivateAction"), {QStringLiteral("dance"), QVariantList(), QVariantMap()});
    EXPECT_EQ(answer.errorMessage(), QStringLiteral("Quirevault has no command named 'dance'"));
}

TEST(SingleInstanceName, IsTheProgramsOwnForTheDefaultLibrary)
{
    EXPECT_EQ(SingleInstance::nameFor(defaultDataFolder()), kName);
    EXPECT_EQ(SingleInstance::nameFor(QString(defaultDataFolder() + u'/')), kName);
}

TEST(SingleInstanceName, TellsOtherLibrariesApartAndIsAlwaysTheSame)
{
    const QString one = SingleInstance::nameFor(QStringLiteral("/one/Quirevault"));
    EXPECT_EQ(one, SingleInstance::nameFor(QStringLiteral("/one//Quirevault")));
    EXPECT_NE(one, SingleInstance::nameFor(QStringLiteral("/two/Quirevault")));
    EXPECT_TRUE(one.startsWith(QString(kName + u".Library_")));
}

TEST(ActivationTokenTest, IsTakenFromTheEnvironmentOnce)
{
    qputenv("XDG_ACTIVATION_TOKEN", "wayland-1");
    qputenv("DESKTOP_STARTUP_ID", "x11-1");
    const ActivationToken token = ActivationToken::ofThisProcess();
    EXPECT_EQ(token.wayland, QStringLiteral("wayland-1"));
    EXPECT_EQ(token.x11, QStringLiteral("x11-1"));
    EXPECT_FALSE(qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN"));
    EXPECT_FALSE(qEnvironmentVariableIsSet("DESKTOP_STARTUP_ID"));
}
