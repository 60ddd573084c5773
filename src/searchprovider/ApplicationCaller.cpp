#include "searchprovider/ApplicationCaller.h"

#include "base/Log.h"
#include "platform/ApplicationInterface.h"

#include <QDBusConnectionInterface>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QProcess>
#include <QTimer>
#include <chrono>
#include <utility>

namespace
{
/// Chosen: longer than a start takes on a busy machine, shorter than a person keeps trying.
constexpr std::chrono::seconds kStartPatience{20};
} // namespace

ApplicationCaller::ApplicationCaller(const QDBusConnection &bus, const QString &name, const QString &program)
    : m_bus(bus)
    , m_name(name)
    , m_program(program)
{
}

void ApplicationCaller::activateAction(const QString &action, const QString &text,
                                       const QVariantMap &platformData)
{
    QDBusMessage message = QDBusMessage::createMethodCall(m_name, QLatin1String(kApplicationObjectPath),
                                                          QLatin1String(kApplicationInterface),
                                                          QStringLiteral("ActivateAction"));
    message.setArguments({action, QVariant::fromValue(QVariantList{text}), platformData});
    call(message);
}

void ApplicationCaller::call(const QDBusMessage &message)
{
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(message), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, message, watcher] {
        watcher->deleteLater();
        answered(message, *watcher);
    });
}

void ApplicationCaller::answered(const QDBusMessage &message, QDBusPendingCallWatcher &watcher)
{
    if (!watcher.isError())
        return;
    if (watcher.error().type() == QDBusError::ServiceUnknown)
        return startAndCall(message);
    logLine(u"ApplicationCaller: Error calling " + m_name + u": " + watcher.error().message());
}

void ApplicationCaller::startAndCall(const QDBusMessage &message)
{
    m_waiting.append(message);
    if (m_starting)
        return;
    m_starting = new QDBusServiceWatcher(m_name, m_bus, QDBusServiceWatcher::WatchForRegistration, this);
    connect(m_starting, &QDBusServiceWatcher::serviceRegistered, this, &ApplicationCaller::callWaiting);
    // It may end before it takes its name, where there is no display for instance.
    QTimer::singleShot(kStartPatience, m_starting, [this] { giveUp(); });
    if (!QProcess::startDetached(m_program, {QString::fromLatin1(kServiceOption)}))
        giveUp();
}

void ApplicationCaller::giveUp()
{
    logLine(u"ApplicationCaller: Error starting " + m_program);
    std::exchange(m_starting, nullptr)->deleteLater();
    m_waiting.clear();
}

void ApplicationCaller::callWaiting()
{
    std::exchange(m_starting, nullptr)->deleteLater();
    for (const QDBusMessage &message : std::exchange(m_waiting, {}))
        call(message);
}
