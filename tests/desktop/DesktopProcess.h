#pragma once

#include "support/Programs.h"
#include "support/TemporaryFolder.h"

#include <QProcess>
#include <QProcessEnvironment>

/// The real program with its windows on the offscreen platform and a library of its own.
class DesktopProcess
{
public:
    /// What a program needs to run with a library in `home`.
    static QProcessEnvironment environmentIn(const TemporaryFolder &home)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("XDG_DATA_HOME"), home.path(QStringLiteral("data")));
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), home.path(QStringLiteral("config")));
        environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), home.path());
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        environment.insert(QStringLiteral("QUIREVAULT_OPENLIBRARY_URL"), QString());
        return environment;
    }

    /// `home` holds the library; `bus` is the address of the session bus.
    DesktopProcess(const TemporaryFolder &home, const QString &bus)
    {
        QProcessEnvironment environment = environmentIn(home);
        environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), bus);
        m_process.setProcessEnvironment(environment);
    }

    ~DesktopProcess()
    {
        if (m_process.state() != QProcess::NotRunning) {
            m_process.kill();
            m_process.waitForFinished();
        }
    }

    void setEnvironment(const QString &name, const QString &value)
    {
        QProcessEnvironment environment = m_process.processEnvironment();
        environment.insert(name, value);
        m_process.setProcessEnvironment(environment);
    }
    void unsetEnvironment(const QString &name)
    {
        QProcessEnvironment environment = m_process.processEnvironment();
        environment.remove(name);
        m_process.setProcessEnvironment(environment);
    }

    void setWorkingFolder(const QString &path) { m_process.setWorkingDirectory(path); }

    void start(const QStringList &arguments = {}, const QString &program = commandLineProgram())
    {
        m_process.start(program, arguments);
        EXPECT_TRUE(m_process.waitForStarted());
    }

    /// Waits for the end and answers the exit status; -1 when it crashed or went on for a minute.
    int status()
    {
        constexpr int kHangMs = 60'000;
        if (!m_process.waitForFinished(kHangMs) && m_process.state() != QProcess::NotRunning)
            return -1;
        return m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
    }

    /// Ends it as `kill -9` does.
    void kill()
    {
        m_process.kill();
        EXPECT_TRUE(m_process.waitForFinished());
    }

    bool isRunning() { return m_process.state() == QProcess::Running; }
    QByteArray standardOutput() { return m_process.readAllStandardOutput(); }
    QByteArray standardError() { return m_process.readAllStandardError(); }

private:
    QProcess m_process;
};
