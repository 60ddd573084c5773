#pragma once

#include "support/TemporaryFolder.h"

#include <QList>
#include <QProcess>
#include <QProcessEnvironment>
#include <QString>

/// A program that a bus starts when its name is called for.
struct BusService {
    QString name;
    QString command;
};

/// A session bus of the test's own, which goes with it. It starts no services but those that it is told of,
/// and only programs that are told its address find it.
class PrivateBus
{
public:
    /// Services are started in `environment`.
    explicit PrivateBus(const QList<BusService> &services = {},
                        const QProcessEnvironment &environment = QProcessEnvironment::systemEnvironment())
    {
        for (const BusService &service : services) {
            m_folder.write(service.name + u".service", QString(u"[D-BUS Service]\nName=" + service.name +
                                                               u"\nExec=" + service.command + u'\n')
                                                           .toLocal8Bit());
        }
        const QString configuration = m_folder.write(QStringLiteral("bus.conf"), R"(
            <busconfig>
              <type>session</type>
              <listen>unix:dir=)" + m_folder.path().toLocal8Bit() + R"(</listen>
              <servicedir>)" + m_folder.path().toLocal8Bit() + R"(</servicedir>
              <policy context="default">
                <allow own="*"/>
                <allow send_destination="*"/>
                <allow receive_sender="*"/>
              </policy>
            </busconfig>)");
        m_daemon.setProcessEnvironment(environment);
        m_daemon.setProcessChannelMode(QProcess::SeparateChannels);
        m_daemon.start(QStringLiteral("dbus-daemon"),
                       {QString(u"--config-file=" + configuration), QStringLiteral("--nofork"),
                        QStringLiteral("--nopidfile"), QStringLiteral("--print-address")});
        EXPECT_TRUE(m_daemon.waitForReadyRead()) << m_daemon.errorString().toStdString();
        m_address = QString::fromLocal8Bit(m_daemon.readLine()).trimmed();
    }

    ~PrivateBus()
    {
        m_daemon.terminate();
        m_daemon.waitForFinished();
    }

    QString address() const { return m_address; }

private:
    TemporaryFolder m_folder;
    QProcess m_daemon;
    QString m_address;
};
