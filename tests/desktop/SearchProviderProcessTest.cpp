// The search provider, the application and the command line as processes of their own, on a private bus that
// starts the first two as a session's bus does.
#include "desktop/DesktopProcessFixture.h"
#include "desktop/SessionFile.h"
#include "platform/ApplicationInterface.h"
#include "searchprovider/SearchProviderProgram.h"
#include "store/SideDatabase.h"
#include "support/PdfBuilder.h"
#include "support/Programs.h"

#include <QDBusReply>
#include <QDir>
#include <QUrl>
#include <chrono>
#include <csignal>
#include <poll.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace
{

const auto kShell = QStringLiteral("org.gnome.Shell.SearchProvider2");
const auto kRunner = QStringLiteral("org.kde.krunner1");

BusService providerService()
{
    return {QLatin1String(kSearchProviderName), searchProviderProgram()};
}

/// Of a process that is not this one's child.
class ProcessEnd
{
public:
    explicit ProcessEnd(uint id)
        : m_process(static_cast<int>(syscall(SYS_pidfd_open, static_cast<pid_t>(id), 0)))
    {
    }
    ~ProcessEnd() { close(m_process); }
    ProcessEnd(const ProcessEnd &) = delete;
    ProcessEnd &operator=(const ProcessEnd &) = delete;
    void await() const
    {
        pollfd ended{m_process, POLLIN, 0};
        if (m_process >= 0) // else it has ended already
            poll(&ended, 1, -1);
    }

private:
    int m_process;
};

} // namespace

/// The bus starts the provider; the application it does not know.
class SearchProviderProcessTest : public DesktopProcessFixture
{
protected:
    explicit SearchProviderProcessTest(const QList<BusService> &services = {providerService()})
        : DesktopProcessFixture(services)
    {
        EXPECT_TRUE(QDir().mkpath(m_home.path(QStringLiteral("data/Quirevault"))));
    }

    ~SearchProviderProcessTest() override
    {
        // Nobody else ends what the bus started; the provider would wait for its minute.
        for (const QString &name : {m_name, QString::fromLatin1(kSearchProviderName)}) {
            const QDBusReply<uint> id = m_connection.interface()->servicePid(name);
            if (!id.isValid())
                continue;
            const ProcessEnd end(id.value());
            kill(static_cast<pid_t>(id.value()), SIGKILL);
            end.await();
        }
    }

    void run(const QStringList &arguments)
    {
        DesktopProcess process(m_home, m_bus.address());
        process.start(arguments);
        EXPECT_EQ(process.status(), 0) << process.standardError().toStdString();
    }

    void import() { run({QStringLiteral("import"), m_paper}); }

    QDBusMessage ask(const QString &interface, const QString &method, const QVariantList &arguments)
    {
        QDBusMessage message = QDBusMessage::createMethodCall(
            QLatin1String(kSearchProviderName), QLatin1String(kSearchProviderPath), interface, method);
        message.setArguments(arguments);
        const QDBusMessage answer = m_connection.call(message);
        EXPECT_EQ(answer.type(), QDBusMessage::ReplyMessage) << answer.errorMessage().toStdString();
        return answer;
    }

    QStringList find(const QStringList &terms)
    {
        return ask(kShell, QStringLiteral("GetInitialResultSet"), {terms})
            .arguments()
            .value(0)
            .toStringList();
    }

    void activate(const QString &id)
    {
        ask(kShell, QStringLiteral("ActivateResult"), {id, QStringList(QStringLiteral("knots")), 17U});
    }

    void awaitApplication()
    {
        QDBusServiceWatcher watcher(m_name, m_connection, QDBusServiceWatcher::WatchForRegistration);
        QEventLoop loop;
        QObject::connect(&watcher, &QDBusServiceWatcher::serviceRegistered, &loop, &QEventLoop::quit);
        if (!m_connection.interface()->isServiceRegistered(m_name))
            loop.exec();
    }

    /// Quits the application and waits for its end, which comes after its name is free.
    void quitApplication()
    {
        const QDBusReply<uint> id = m_connection.interface()->servicePid(m_name);
        ASSERT_TRUE(id.isValid());
        const ProcessEnd end(id.value());
        runCommand(QStringLiteral("quit"));
        end.await();
    }
    /// By which the only published paper's item is known to be unchanged.
    qint64 digest() const
    {
        Result<SideDatabase> file =
            SideDatabase::open(m_home.path(QStringLiteral("data/Quirevault/system-search.db")),
                               SideDatabase::Missing::Fail, std::chrono::seconds(10));
        return file->number(QStringLiteral("SELECT digest FROM items")).value();
    }

    const QStringList m_terms{QStringLiteral("knot"), QStringLiteral("some")};
    QString m_paper = m_home.write(
        QStringLiteral("a.pdf"),
        PdfBuilder().title("On Knots").author("A. Someone").page({QStringLiteral("Knots")}).build());
    QString m_database = m_home.path(QStringLiteral("data/Quirevault/library.db"));
    SessionFile m_session{m_home.path(QStringLiteral("data/Quirevault/session.json"))};
};

/// The bus starts both, as it does where the program is installed.
class InstalledSearchProviderTest : public SearchProviderProcessTest
{
protected:
    InstalledSearchProviderTest()
        : SearchProviderProcessTest({providerService(),
                                     {QLatin1String(kApplicationId),
                                      QString(desktopProgram() + u' ' + QLatin1String(kServiceOption))}})
    {
    }
};

TEST_F(SearchProviderProcessTest, FindsWhatTheCommandLineImported)
{
    import();
    const QStringList found = find(m_terms);
    ASSERT_EQ(found.size(), 1);
    const QDBusMessage answer = ask(kShell, QStringLiteral("GetResultMetas"), {found});
    const auto metas = qdbus_cast<QList<QVariantMap>>(answer.arguments().value(0));
    ASSERT_EQ(metas.size(), 1);
    EXPECT_EQ(metas[0][QStringLiteral("name")].toString(), QStringLiteral("On Knots"));
    EXPECT_EQ(metas[0][QStringLiteral("description")].toString(), QStringLiteral("A. Someone"));
    const QString cover = metas[0][QStringLiteral("gicon")].toString();
    EXPECT_EQ(cover, m_home.path(u"data/Quirevault/covers/" + found[0] + u".jpg"));
    EXPECT_TRUE(QFile::exists(cover));
}

TEST_F(SearchProviderProcessTest, FindsWhatTheCommandLineChanged)
{
    import();
    const QString id = find(m_terms).value(0);
    run({QStringLiteral("edit"), id, QStringLiteral("--title"), QStringLiteral("On Braids")});
    EXPECT_EQ(find({QStringLiteral("braids")}), QStringList(id));
    EXPECT_EQ(find({QStringLiteral("knots")}), QStringList());
    run({QStringLiteral("tag"), id, QStringLiteral("Topology")});
    EXPECT_EQ(find({QStringLiteral("topology")}), QStringList(id));
    run({QStringLiteral("tags"), QStringLiteral("rename"), QStringLiteral("Topology"),
         QStringLiteral("Algebra")});
    EXPECT_EQ(find({QStringLiteral("topology")}), QStringList());
    EXPECT_EQ(find({QStringLiteral("algebra")}), QStringList(id));
    run({QStringLiteral("remove"), id});
    EXPECT_EQ(find({QStringLiteral("braids")}), QStringList());
}

TEST_F(SearchProviderProcessTest, KnowsInEveryProcessWhatIsUnchanged)
{
    import();
    const QString id = find(m_terms).value(0);
    run({QStringLiteral("tag"), id, QStringLiteral("Algebra")});
    const qint64 before = digest();
    run({QStringLiteral("tag"), id, QStringLiteral("Topology")});
    EXPECT_NE(digest(), before);
    run({QStringLiteral("untag"), id, QStringLiteral("Topology")});
    EXPECT_EQ(digest(), before);
}

TEST_F(SearchProviderProcessTest, NeverTouchesTheLibrary)
{
    EXPECT_EQ(find(m_terms), QStringList());
    EXPECT_FALSE(QFile::exists(m_database));
    import();
    ASSERT_TRUE(QFile::setPermissions(m_database, {}));
    ASSERT_TRUE(QFile::rename(m_database, m_database + u".away"));
    EXPECT_EQ(find(m_terms).size(), 1);
    EXPECT_FALSE(QFile::exists(m_database));
}

TEST_F(SearchProviderProcessTest, AnswersKRunner)
{
    import();
    const QDBusMessage answer = ask(kRunner, QStringLiteral("Match"), {QStringLiteral("knot some")});
    EXPECT_EQ(answer.signature(), QStringLiteral("a(sssida{sv})"));
}

TEST_F(SearchProviderProcessTest, OpensAPaperInTheApplicationThatRuns)
{
    import();
    const QString id = find(m_terms).value(0);
    DesktopProcess program(m_home, m_bus.address());
    startAndWait(program);
    activate(id);
    const QJsonObject request = m_session.await([](const QJsonObject &) { return true; });
    EXPECT_EQ(request[QLatin1String("paperId")].toString(), id);
    EXPECT_EQ(QUrl(request[QLatin1String("url")].toString()), QUrl::fromLocalFile(m_paper));
    quit(program);
}

TEST_F(SearchProviderProcessTest, StartsTheApplicationWhereTheBusCannot)
{
    import();
    const QString id = find(m_terms).value(0);
    activate(id);
    const QJsonObject request = m_session.await([](const QJsonObject &) { return true; });
    EXPECT_EQ(request[QLatin1String("paperId")].toString(), id);
    quitApplication();
}

TEST_F(SearchProviderProcessTest, StartsTheApplicationForAPaperThatIsGone)
{
    activate(QStringLiteral("0123"));
    awaitApplication();
    // The quit command closes the message with the window and ends the program.
    quitApplication();
    EXPECT_TRUE(m_session.requests().isEmpty());
}

TEST_F(SearchProviderProcessTest, StartsTheApplicationForASearch)
{
    ask(kShell, QStringLiteral("LaunchSearch"), {m_terms, 17U});
    awaitApplication();
    EXPECT_EQ(runCommand(QStringLiteral("find-in-library")).type(), QDBusMessage::ReplyMessage);
    quitApplication();
}

TEST_F(SearchProviderProcessTest, EndsWithoutABus)
{
    DesktopProcess provider(m_home, QStringLiteral("unix:path=/nonexistent"));
    provider.start({}, searchProviderProgram());
    EXPECT_EQ(provider.status(), 1);
    EXPECT_TRUE(provider.standardError().startsWith("quirevault-search-provider: it cannot be reached"));
}

TEST_F(SearchProviderProcessTest, LeavesTheNameToTheOneThatHasIt)
{
    EXPECT_EQ(find(m_terms), QStringList());
    DesktopProcess second(m_home, m_bus.address());
    second.start({}, searchProviderProgram());
    EXPECT_EQ(second.status(), 1);
}

TEST_F(InstalledSearchProviderTest, TheBusStartsTheApplicationWithoutAWindowOfItsOwn)
{
    import();
    const QString id = find(m_terms).value(0);
    // Whatever folder its library lies in, the bus waits for the application's own name.
    QDBusMessage message = QDBusMessage::createMethodCall(
        QLatin1String(kApplicationId), QLatin1String(kApplicationObjectPath),
        QLatin1String(kApplicationInterface), QStringLiteral("ActivateAction"));
    message.setArguments(
        {QLatin1String(kOpenPaperAction), QVariant::fromValue(QVariantList{id}), QVariantMap()});
    EXPECT_EQ(m_connection.call(message).type(), QDBusMessage::ReplyMessage);
    const QJsonObject request = m_session.await([](const QJsonObject &) { return true; });
    EXPECT_EQ(request[QLatin1String("paperId")].toString(), id);
    quitApplication();
}

TEST_F(InstalledSearchProviderTest, AStartByTheBusOfWhatRunsBringsThatForward)
{
    DesktopProcess program(m_home, m_bus.address());
    startAndWait(program);
    DesktopProcess service(m_home, m_bus.address());
    service.start({QLatin1String(kServiceOption)}, desktopProgram());
    EXPECT_EQ(service.status(), 0) << service.standardError().toStdString();
    quit(program);
}
