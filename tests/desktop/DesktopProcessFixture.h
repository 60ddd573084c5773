#pragma once

#include "app/SingleInstance.h"
#include "desktop/DesktopProcess.h"
#include "support/Printing.h"
#include "support/PrivateBus.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QEventLoop>
#include <gtest/gtest.h>

/// Programs of one library that meet on a private bus.
class DesktopProcessFixture : public testing::Test
{
protected:
    /// `services` are what the bus starts, in an environment with the test's library.
    explicit DesktopProcessFixture(const QList<BusService> &services = {})
        : m_bus(services, DesktopProcess::environmentIn(m_home))
    {
    }
    ~DesktopProcessFixture() override { QDBusConnection::disconnectFromBus(m_connectionName); }

    /// Starts the program and waits until it has taken its name; its answers wait for its window.
    void startAndWait(DesktopProcess &process, const QStringList &arguments = {})
    {
        QDBusServiceWatcher watcher(m_name, m_connection, QDBusServiceWatcher::WatchForRegistration);
        QEventLoop loop;
        QObject::connect(&watcher, &QDBusServiceWatcher::serviceRegistered, &loop, &QEventLoop::quit);
        process.start(arguments);
        if (!m_connection.interface()->isServiceRegistered(m_name))
            loop.exec();
    }

    /// Ends the program as a crash would, and waits until its name is free.
    void crash(DesktopProcess &process)
    {
        QDBusServiceWatcher watcher(m_name, m_connection, QDBusServiceWatcher::WatchForUnregistration);
        QEventLoop loop;
        QObject::connect(&watcher, &QDBusServiceWatcher::serviceUnregistered, &loop, &QEventLoop::quit);
        process.kill();
        if (m_connection.interface()->isServiceRegistered(m_name))
            loop.exec();
    }

    QDBusMessage runCommand(const QString &command)
    {
        QDBusMessage call = QDBusMessage::createMethodCall(
            m_name, QStringLiteral("/org/quirevault/Quirevault"),
            QStringLiteral("org.freedesktop.Application"), QStringLiteral("ActivateAction"));
        call.setArguments({command, QVariantList(), QVariantMap()});
        return m_connection.call(call);
    }

    /// Ends the program as a person would.
    void quit(DesktopProcess &process)
    {
        runCommand(QStringLiteral("quit"));
        EXPECT_EQ(process.status(), 0) << process.standardError().toStdString();
    }

    int m_argc = 0;
    QCoreApplication m_application{m_argc, nullptr};
    TemporaryFolder m_home;
    PrivateBus m_bus;
    QString m_connectionName = QStringLiteral("desktop test");
    QDBusConnection m_connection = QDBusConnection::connectToBus(m_bus.address(), m_connectionName);
    QString m_name = SingleInstance::nameFor(m_home.path(QStringLiteral("data/Quirevault")));
};
