#include "SearchProviderBenchmark.h"

#include "Figures.h"
#include "platform/Paths.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDBusServiceWatcher>
#include <QEventLoop>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <csignal>
#include <cstdio>
#include <cstdlib>

namespace
{

const auto kName = QStringLiteral("org.quirevault.Quirevault.SearchProvider");

void write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(content) == content.size())
        return;
    std::fprintf(stderr, "%s cannot be written\n", qPrintable(path));
    std::exit(1);
}

/// A session bus that knows how to start the provider.
class Bus
{
public:
    explicit Bus(const QString &dataHome)
    {
        const QByteArray folder = QFile::encodeName(m_folder.path());
        write(m_folder.filePath(QStringLiteral("provider.service")),
              "[D-BUS Service]\nName=" + kName.toLatin1() + "\nExec=" +
                  QFile::encodeName(companionProgram(QStringLiteral("quirevault-search-provider"))) + '\n');
        const QString configuration = m_folder.filePath(QStringLiteral("bus.conf"));
        write(configuration,
              "<busconfig><type>session</type><listen>unix:dir=" + folder + "</listen><servicedir>" + folder +
                  "</servicedir><policy context=\"default\"><allow own=\"*\"/>"
                  "<allow send_destination=\"*\"/><allow receive_sender=\"*\"/></policy></busconfig>");
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("XDG_DATA_HOME"), dataHome);
        m_daemon.setProcessEnvironment(environment);
        m_daemon.start(QStringLiteral("dbus-daemon"),
                       {QString(u"--config-file=" + configuration), QStringLiteral("--nofork"),
                        QStringLiteral("--nopidfile"), QStringLiteral("--print-address")});
        m_daemon.waitForReadyRead();
        m_connection = QDBusConnection::connectToBus(QString::fromLocal8Bit(m_daemon.readLine()).trimmed(),
                                                     QStringLiteral("desktop"));
    }

    ~Bus()
    {
        QDBusConnection::disconnectFromBus(QStringLiteral("desktop"));
        m_connection = QDBusConnection(QString()); // closed before its bus ends
        m_daemon.terminate();
        m_daemon.waitForFinished();
    }

    QDBusMessage call(const QString &interface, const QString &method, const QVariant &argument)
    {
        QDBusMessage message = QDBusMessage::createMethodCall(
            kName, QStringLiteral("/org/quirevault/Quirevault/SearchProvider"), interface, method);
        message.setArguments({argument});
        QDBusMessage answer = m_connection.call(message);
        if (answer.type() == QDBusMessage::ReplyMessage)
            return answer;
        std::fprintf(stderr, "The provider does not answer: %s\n", qPrintable(answer.errorMessage()));
        std::exit(1);
    }

    void endProvider()
    {
        const QDBusReply<uint> id = m_connection.interface()->servicePid(kName);
        if (!id.isValid())
            return;
        QDBusServiceWatcher watcher(kName, m_connection, QDBusServiceWatcher::WatchForUnregistration);
        QEventLoop loop;
        QObject::connect(&watcher, &QDBusServiceWatcher::serviceUnregistered, &loop, &QEventLoop::quit);
        kill(static_cast<pid_t>(id.value()), SIGTERM);
        loop.exec();
    }

private:
    QTemporaryDir m_folder;
    QProcess m_daemon;
    QDBusConnection m_connection{QString()};
};

void figure(const char *what, const std::vector<Milliseconds> &times, const char *target)
{
    std::printf("100,000 papers: %s\t%.2f\t-\tms\t%s\n", what, median(times).count(), target);
}

/// What the shell asks for while a person types, and what it shows of the answer.
void search(Bus &bus, const QString &terms)
{
    const auto shell = QStringLiteral("org.gnome.Shell.SearchProvider2");
    const QDBusMessage found = bus.call(shell, QStringLiteral("GetInitialResultSet"), terms.split(u' '));
    bus.call(shell, QStringLiteral("GetResultMetas"), found.arguments().value(0).toStringList());
}

} // namespace

void measureProvider(const QString &dataHome)
{
    constexpr int kRounds = 15;
    Bus bus(dataHome);
    std::vector<Milliseconds> starts;
    for (int round = 0; round < kRounds; ++round) {
        bus.endProvider();
        starts.push_back(timeOf([&] { search(bus, QStringLiteral("matrix")); }));
    }
    figure("provider: from the bus's start of it to its first answer", starts, "most 100");
    for (const char *terms : {"saddlepoint", "t", "ma", "matrix energy m"}) {
        std::vector<Milliseconds> shell;
        std::vector<Milliseconds> runner;
        const QString text = QString::fromLatin1(terms);
        for (int round = 0; round < kRounds; ++round) {
            shell.push_back(timeOf([&] { search(bus, text); }));
            runner.push_back(
                timeOf([&] { bus.call(QStringLiteral("org.kde.krunner1"), QStringLiteral("Match"), text); }));
        }
        figure(qPrintable(QStringLiteral("provider: '%1' asked and shown by GNOME Shell").arg(text)), shell,
               "most 20");
        figure(qPrintable(QStringLiteral("provider: '%1' asked by KRunner").arg(text)), runner, "most 20");
    }
    bus.endProvider();
}
