// The program with its window, as processes of their own that meet on a private bus.
#include "desktop/DesktopProcessFixture.h"
#include "support/Program.h"
#include "support/Programs.h"

#include <QFile>

class DesktopProcessTest : public DesktopProcessFixture
{
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
