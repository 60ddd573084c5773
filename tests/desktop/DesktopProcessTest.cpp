// The program with its window, as processes of their own that meet on a private bus.
#include "desktop/DesktopProcess.h"
#include "app/SingleInstance.h"
#include "support/Printing.h"
#include "support/PrivateBus.h"
#include "support/Program.h"
#include "support/Programs.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QEventLoop>
#include <QFile>
#include <gtest/gtest.h>

namespace
{
const auto kConnection = QStringLiteral("desktop test");
const auto kObjectPath = QStringLiteral("/org/quirevault/Quirevault");
} // namespace

class DesktopProcessTest : public testing::Test
{
protected:
    ~DesktopProcessTest() override { QDBusConnection::disconnectFromBus(kConnection); }

    /// Starts the program and waits until it has taken its name; its answers wait for its window.
    void startAndWait(DesktopProcess &process)
    {
        QDBusServiceWatcher watcher(m_name, m_connection, QDBusServiceWatcher::WatchForRegistration);
        QEventLoop loop;
        QObject::connect(&watcher, &QDBusServiceWatcher::serviceRegistered, &loop, &QEventLoop::quit);
        process.start();
        if (!m_connection.interface()->isServiceRegistered(m_name))
            loop.exec();
    }

    QDBusMessage runCommand(const QString &command)
    {
        QDBusMessage call =
            QDBusMessage::createMethodCall(m_name, kObjectPath, QStringLiteral("org.freedesktop.Application"),
                                           QStringLiteral("ActivateAction"));
        call.setArguments({command, QVariantList(), QVariantMap()});
        return m_connection.call(call);
    }

    int m_argc = 0;
    QCoreApplication m_application{m_argc, nullptr};
    TemporaryFolder m_home;
    PrivateBus m_bus;
    QDBusConnection m_connection = QDBusConnection::connectToBus(m_bus.address(), kConnection);
    QString m_name = SingleInstance::nameFor(m_home.path(QStringLiteral("data/Quirevault")));
};

TEST_F(DesktopProcessTest, StartsAndEndsCleanlyOnRequest)
{
    DesktopProcess program(m_home, m_bus.address());
    startAndWait(program);
    const QDBusMessage answer = runCommand(QStringLiteral("quit"));
    EXPECT_EQ(answer.type(), QDBusMessage::ReplyMessage) << answer.errorMessage().toStdString();
    EXPECT_EQ(program.status(), 0) << program.standardError().toStdString();
    EXPECT_TRUE(QFile::exists(m_home.path(QStringLiteral("data/Quirevault/library.db"))));
    EXPECT_TRUE(QFile::exists(m_home.path(QStringLiteral("data/Quirevault/session.json"))));
}

TEST_F(DesktopProcessTest, ASecondStartBringsTheFirstForwardAndEnds)
{
    DesktopProcess first(m_home, m_bus.address());
    startAndWait(first);
    DesktopProcess second(m_home, m_bus.address());
    second.start();
    EXPECT_EQ(second.status(), 0) << second.standardError().toStdString();
    EXPECT_TRUE(first.isRunning());
    runCommand(QStringLiteral("quit"));
    EXPECT_EQ(first.status(), 0);
}

TEST_F(DesktopProcessTest, AnotherLibraryOpensBesideTheFirst)
{
    DesktopProcess first(m_home, m_bus.address());
    startAndWait(first);
    const QString firstName = m_name;
    const TemporaryFolder elsewhere;
    m_name = SingleInstance::nameFor(elsewhere.path(QStringLiteral("data/Quirevault")));
    DesktopProcess second(elsewhere, m_bus.address());
    startAndWait(second);
    EXPECT_TRUE(first.isRunning());
    runCommand(QStringLiteral("quit"));
    EXPECT_EQ(second.status(), 0);
    m_name = firstName;
    runCommand(QStringLiteral("quit"));
    EXPECT_EQ(first.status(), 0);
}

TEST_F(DesktopProcessTest, SaysWhatIsMissingWithoutADisplay)
{
    DesktopProcess program(m_home, m_bus.address());
    for (const char *name : {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY"})
        program.unsetEnvironment(QLatin1String(name));
    program.start();
    EXPECT_EQ(program.status(), 1);
    EXPECT_TRUE(program.standardError().contains("set WAYLAND_DISPLAY or DISPLAY"));
}

TEST(DesktopProgramOfAnInstallation, IsMissedByName)
{
    const TemporaryFolder folder;
    const QString alone = folder.path(QStringLiteral("quirevault"));
    ASSERT_TRUE(QFile::copy(commandLineProgram(), alone));
    QProcess process;
    process.start(alone, QStringList());
    ASSERT_TRUE(process.waitForFinished());
    EXPECT_EQ(process.exitCode(), 1);
    EXPECT_TRUE(
        process.readAllStandardError().contains("libexec/quirevault/quirevault-desktop: No such file"));
}

TEST(CommandLineProgram, NamesTheWindowInItsHelp)
{
    const ProgramRun help = Program().run({QStringLiteral("--help")});
    EXPECT_EQ(help.status, 0);
    EXPECT_TRUE(help.out.contains(u"Without a command, quirevault opens the library window."));
}
