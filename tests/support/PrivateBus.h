#pragma once

#include "support/TemporaryFolder.h"

#include <QProcess>
#include <QString>

/// A session bus of the test's own, which goes with it. It starts no services, and only programs that are
/// told its address find it.
class PrivateBus
{
public:
    PrivateBus()
    {
        const QString configuration = m_folder.write(QStringLiteral("bus.conf"), R"(
            <busconfig>
              <type>session</type>
              <listen>unix:dir=)" + m_folder.path().toLocal8Bit() + R"(</listen>
              <policy context="default">
                <allow own="*"/>
                <allow send_destination="*"/>
                <allow receive_sender="*"/>
              </policy>
            </busconfig>)");
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
