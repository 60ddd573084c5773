// The provider's two interfaces over a private bus, with a stand-in for the application and the time in the
// test's hands.
#include "searchprovider/SearchProvider.h"
#include "platform/ApplicationInterface.h"
#include "searchprovider/RunnerSearchProvider.h"
#include "searchprovider/SearchProviderProgram.h"
#include "searchprovider/ShellSearchProvider.h"
#include "searchprovider/ShownPaper.h"
#include "support/FakeClock.h"
#include "support/Printing.h"
#include "support/PrivateBus.h"
#include "systemsearch/ItemWriting.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QDir>
#include <QEventLoop>
#include <gtest/gtest.h>
#include <thread>

namespace
{

using namespace std::chrono_literals;

/// Writes down what it is asked for.
class FakeApplication : public QDBusVirtualObject
{
public:
    QString introspect(const QString &) const override { return {}; }

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override
    {
        const QVariantList arguments = message.arguments();
        method = message.member();
        action = arguments.value(0).toString();
        text = qdbus_cast<QVariantList>(arguments.value(1)).value(0).toString();
        platformData = qdbus_cast<QVariantMap>(arguments.value(2));
        ++calls;
        connection.send(message.createReply());
        loop.quit();
        return true;
    }

    void await()
    {
        if (calls == 0)
            loop.exec();
        calls = 0;
    }

    int calls = 0;
    QString method;
    QString action;
    QString text;
    QVariantMap platformData;
    QEventLoop loop;
};

SearchableItem item(const QString &id, const QString &title, const QStringList &names = {}, int year = 0)
{
    SearchableItem item{
        .uniqueIdentifier = id,
        .domainIdentifier = {},
        .contentType = {},
        .title = title,
        .authorNames = names,
        .contentDescription = {},
        .keywords = {QStringLiteral("_currently_reading"), QStringLiteral("Topology")},
        .contentCreationDate = {},
    };
    if (year != 0)
        item.contentCreationDate = QDate(year, 1, 1).startOfDay();
    return item;
}

const auto kShell = QStringLiteral("org.gnome.Shell.SearchProvider2");
const auto kRunner = QStringLiteral("org.kde.krunner1");

} // namespace

class SearchProviderTest : public testing::Test
{
protected:
    SearchProviderTest()
    {
        m_connection.registerVirtualObject(QLatin1String(kApplicationObjectPath), &m_app);
        m_connection.registerService(QLatin1String(kApplicationId));
        new ShellSearchProvider(m_provider);
        new RunnerSearchProvider(m_provider);
        m_connection.registerObject(QLatin1String(kSearchProviderPath), &m_provider);
        m_connection.registerService(QLatin1String(kSearchProviderName));
    }

    ~SearchProviderTest() override
    {
        QDBusConnection::disconnectFromBus(QStringLiteral("provider"));
        QDBusConnection::disconnectFromBus(QStringLiteral("desktop"));
    }

    void put(const QList<SearchableItem> &items)
    {
        const Result<SideDatabase *> database = m_items.forWriting();
        ASSERT_TRUE(database);
        ASSERT_TRUE(putItems(**database, items));
    }

    /// Calls as the desktop does, from elsewhere, while the provider answers.
    QDBusMessage call(const QString &interface, const QString &method, const QVariantList &arguments)
    {
        QDBusMessage answer;
        QEventLoop loop;
        std::thread desktop([&] {
            QDBusMessage message = QDBusMessage::createMethodCall(
                QLatin1String(kSearchProviderName), QLatin1String(kSearchProviderPath), interface, method);
            message.setArguments(arguments);
            answer = m_desktop.call(message);
            QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
        });
        loop.exec();
        desktop.join();
        EXPECT_EQ(answer.type(), QDBusMessage::ReplyMessage) << answer.errorMessage().toStdString();
        return answer;
    }

    QList<QVariantMap> metas(const QStringList &ids)
    {
        const QDBusMessage answer = call(kShell, QStringLiteral("GetResultMetas"), {ids});
        EXPECT_EQ(answer.signature(), QStringLiteral("aa{sv}"));
        return qdbus_cast<QList<QVariantMap>>(answer.arguments().value(0));
    }

    RunnerMatches matches(const QString &query)
    {
        const QDBusMessage answer = call(kRunner, QStringLiteral("Match"), {query});
        EXPECT_EQ(answer.signature(), QStringLiteral("a(sssida{sv})"));
        return qdbus_cast<RunnerMatches>(answer.arguments().value(0));
    }

    int m_argc = 0;
    QCoreApplication m_application{m_argc, nullptr};
    TemporaryFolder m_folder;
    PrivateBus m_bus;
    QDBusConnection m_connection = QDBusConnection::connectToBus(m_bus.address(), QStringLiteral("provider"));
    QDBusConnection m_desktop = QDBusConnection::connectToBus(m_bus.address(), QStringLiteral("desktop"));
    FakeApplication m_app;
    FakeClock m_clock;
    bool m_hasEnded = false;
    ItemFile m_items{m_folder.path(QStringLiteral("search.db"))};
    ApplicationCaller m_caller{m_connection, QLatin1String(kApplicationId), QStringLiteral("/nonexistent")};
    SearchProvider m_provider{{.itemsPath = m_items.path(),
                               .coversFolder = m_folder.path(),
                               .clock = m_clock,
                               .application = m_caller,
                               .end = [this] {
                                   m_hasEnded = true;
                               }}};
};

TEST_F(SearchProviderTest, TellsTheShellWhichPapersItFound)
{
    put({item(QStringLiteral("a"), QStringLiteral("Knots")),
         item(QStringLiteral("b"), QStringLiteral("Links")),
         item(QStringLiteral("c"), QStringLiteral("Knots and links"))});
    const QDBusMessage first =
        call(kShell, QStringLiteral("GetInitialResultSet"), {QStringList(QStringLiteral("kno"))});
    EXPECT_EQ(first.signature(), QStringLiteral("as"));
    EXPECT_EQ(first.arguments().value(0).toStringList(),
              (QStringList{QStringLiteral("a"), QStringLiteral("c")}));
    const QDBusMessage next = call(kShell, QStringLiteral("GetSubsearchResultSet"),
                                   {QStringList{QStringLiteral("a"), QStringLiteral("c")},
                                    QStringList{QStringLiteral("kno"), QStringLiteral("link")}});
    EXPECT_EQ(next.arguments().value(0).toStringList(), QStringList(QStringLiteral("c")));
}

TEST_F(SearchProviderTest, ShowsTheShellTitleAuthorsAndYearWithTheCover)
{
    const QString cover = m_folder.write(QStringLiteral("a.jpg"), "");
    put({item(QStringLiteral("a"), QStringLiteral("Knots"),
              {QStringLiteral("A. One"), QStringLiteral("B. Two")}, 1987)});
    EXPECT_EQ(metas({QStringLiteral("a")}),
              (QList<QVariantMap>{{{QStringLiteral("id"), QStringLiteral("a")},
                                   {QStringLiteral("name"), QStringLiteral("Knots")},
                                   {QStringLiteral("description"), QStringLiteral("A. One, B. Two · 1987")},
                                   {QStringLiteral("gicon"), cover}}}));
}

TEST_F(SearchProviderTest, ShowsWhatThereIsOfAPaperWithoutAuthorsYearAndCover)
{
    put({item(QStringLiteral("a"), QStringLiteral("Knots")),
         item(QStringLiteral("b"), QStringLiteral("Links"), {}, 1987)});
    const QList<QVariantMap> shown = metas({QStringLiteral("a"), QStringLiteral("b")});
    ASSERT_EQ(shown.size(), 2);
    EXPECT_EQ(shown[0][QStringLiteral("description")].toString(), QString());
    EXPECT_EQ(shown[0][QStringLiteral("gicon")].toString(), QStringLiteral("application-pdf"));
    EXPECT_EQ(shown[1][QStringLiteral("description")].toString(), QStringLiteral("1987"));
}

TEST_F(SearchProviderTest, ShowsNoMoreThanALineOfATitle)
{
    put({item(QStringLiteral("a"), QStringLiteral("Knots\n") + QString(5000, u'x'))});
    const QString shown = metas({QStringLiteral("a")}).value(0)[QStringLiteral("name")].toString();
    EXPECT_EQ(shown.size(), kLongestShown);
    EXPECT_TRUE(shown.startsWith(u"Knots x"));
}

TEST_F(SearchProviderTest, NeverShowsReservedTags)
{
    put({item(QStringLiteral("a"), QStringLiteral("Knots"), {QStringLiteral("One")}, 1987)});
    const QVariantMap meta = metas({QStringLiteral("a")}).value(0);
    ASSERT_FALSE(meta.isEmpty());
    for (const QVariant &value : meta)
        EXPECT_FALSE(value.toString().contains(u"currently"));
    EXPECT_TRUE(matches(QStringLiteral("_currently_reading")).isEmpty());
}

TEST_F(SearchProviderTest, TellsTheShellOfNoMorePapersThanItMayAskFor)
{
    put({item(QStringLiteral("a"), QStringLiteral("Knots"))});
    EXPECT_EQ(metas(QStringList(100'000, QStringLiteral("a"))).size(), SearchProvider::kMostAskedFor);
}

TEST_F(SearchProviderTest, AnswersKRunnerTheBestFirst)
{
    const QString cover = m_folder.write(QStringLiteral("a.jpg"), "");
    put({item(QStringLiteral("b"), QStringLiteral("Links"), {QStringLiteral("Knots")}),
         item(QStringLiteral("a"), QStringLiteral("Knots"), {QStringLiteral("A. One")}, 1987)});
    const RunnerMatches found = matches(QStringLiteral("  knots "));
    ASSERT_EQ(found.size(), 2);
    EXPECT_EQ(found[0].id, QStringLiteral("a"));
    EXPECT_EQ(found[0].text, QStringLiteral("Knots"));
    EXPECT_EQ(found[0].iconName, cover);
    EXPECT_EQ(found[0].properties[QStringLiteral("subtext")].toString(), QStringLiteral("A. One · 1987"));
    EXPECT_EQ(found[1].id, QStringLiteral("b"));
    EXPECT_GT(found[0].relevance, found[1].relevance);
    EXPECT_GT(found[1].relevance, 0);
}

TEST_F(SearchProviderTest, SaysToKRunnerThatItHasNoActions)
{
    const QDBusMessage actions = call(kRunner, QStringLiteral("Actions"), {});
    EXPECT_EQ(actions.signature(), QStringLiteral("a(sss)"));
    EXPECT_TRUE(qdbus_cast<RunnerActions>(actions.arguments().value(0)).isEmpty());
    const QDBusMessage config = call(kRunner, QStringLiteral("Config"), {});
    EXPECT_EQ(qdbus_cast<QVariantMap>(config.arguments().value(0))[QStringLiteral("MinLetterCount")].toInt(),
              3);
    call(kRunner, QStringLiteral("Teardown"), {});
}

TEST_F(SearchProviderTest, OpensAPaperForTheShellAndSaysWhenItWasClicked)
{
    call(kShell, QStringLiteral("ActivateResult"),
         {QStringLiteral("a"), QStringList(QStringLiteral("knots")), 4711U});
    m_app.await();
    EXPECT_EQ(m_app.method, QStringLiteral("ActivateAction"));
    EXPECT_EQ(m_app.action, QStringLiteral("open-paper"));
    EXPECT_EQ(m_app.text, QStringLiteral("a"));
    EXPECT_TRUE(m_app.platformData[QStringLiteral("desktop-startup-id")].toString().endsWith(u"_TIME4711"));

    call(kShell, QStringLiteral("ActivateResult"), {QStringLiteral("a"), QStringList(), 0U});
    m_app.await();
    EXPECT_TRUE(m_app.platformData.isEmpty());
}

TEST_F(SearchProviderTest, ShowsAllInTheLibraryWithTheTermsAsTheyAre)
{
    const QStringList terms{QStringLiteral("$(knots)"), QStringLiteral("; 'links'"),
                            QStringLiteral("--help")};
    call(kShell, QStringLiteral("LaunchSearch"), {terms, 1U});
    m_app.await();
    EXPECT_EQ(m_app.action, QStringLiteral("search"));
    EXPECT_EQ(m_app.text, QStringLiteral("$(knots) ; 'links' --help"));
}

TEST_F(SearchProviderTest, OpensAPaperForKRunnerWithItsTokenOnce)
{
    call(kRunner, QStringLiteral("SetActivationToken"), {QStringLiteral("token-7")});
    call(kRunner, QStringLiteral("Run"), {QStringLiteral("a"), QString()});
    m_app.await();
    EXPECT_EQ(m_app.action, QStringLiteral("open-paper"));
    EXPECT_EQ(m_app.text, QStringLiteral("a"));
    EXPECT_EQ(m_app.platformData[QStringLiteral("activation-token")].toString(), QStringLiteral("token-7"));

    call(kRunner, QStringLiteral("Run"), {QStringLiteral("b"), QString()});
    m_app.await();
    EXPECT_TRUE(m_app.platformData.isEmpty());
}

TEST_F(SearchProviderTest, BoundsTheTextsThatItPassesOn)
{
    call(kShell, QStringLiteral("LaunchSearch"), {QStringList(10'000, QStringLiteral("knots")), 1U});
    m_app.await();
    EXPECT_EQ(m_app.text.size(), SearchProvider::kLongestText);
}

TEST_F(SearchProviderTest, EndsWhenNobodyHasAskedForAMinute)
{
    m_clock.advance(59s);
    matches(QStringLiteral("knots"));
    m_clock.advance(59s);
    metas({QStringLiteral("a")});
    m_clock.advance(59s);
    call(kRunner, QStringLiteral("Run"), {QStringLiteral("a"), QString()});
    m_app.await();
    m_clock.advance(59s);
    EXPECT_FALSE(m_hasEnded);
    m_clock.advance(1s);
    EXPECT_TRUE(m_hasEnded);
}

TEST_F(SearchProviderTest, EndsWhenNobodyHasEverAsked)
{
    m_clock.advance(60s);
    EXPECT_TRUE(m_hasEnded);
}
