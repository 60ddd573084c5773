#include "app/SingleInstance.h"

#include "platform/Paths.h"
#include "platform/Sha256.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDir>
#include <QFile>
#include <utility>

namespace
{

const auto kName = QStringLiteral("org.quirevault.Quirevault");
const auto kObjectPath = QStringLiteral("/org/quirevault/Quirevault");
const auto kInterface = QStringLiteral("org.freedesktop.Application");

constexpr char kWaylandVariable[] = "XDG_ACTIVATION_TOKEN";
constexpr char kX11Variable[] = "DESKTOP_STARTUP_ID";
// The keys of platform data.
const auto kWaylandKey = QStringLiteral("activation-token");
const auto kX11Key = QStringLiteral("desktop-startup-id");

/// Chosen: longer than a start with a large library may take, shorter than a person's patience.
constexpr int kAnswerTimeoutMs = 10'000;

QString takeVariable(const char *name)
{
    const QString value = qEnvironmentVariable(name);
    qunsetenv(name);
    return value;
}

ActivationToken tokenIn(const QVariantMap &platformData)
{
    return {.wayland = platformData.value(kWaylandKey).toString(),
            .x11 = platformData.value(kX11Key).toString()};
}

QVariantMap platformDataWith(const ActivationToken &token)
{
    QVariantMap data;
    if (!token.wayland.isEmpty())
        data.insert(kWaylandKey, token.wayland);
    if (!token.x11.isEmpty())
        data.insert(kX11Key, token.x11);
    return data;
}

} // namespace

ActivationToken ActivationToken::ofThisProcess()
{
    return {.wayland = takeVariable(kWaylandVariable), .x11 = takeVariable(kX11Variable)};
}

void ActivationToken::use() const
{
    if (!wayland.isEmpty())
        qputenv(kWaylandVariable, wayland.toUtf8());
    if (!x11.isEmpty())
        qputenv(kX11Variable, x11.toUtf8());
}

QString SingleInstance::nameFor(const QString &dataFolder)
{
    const QString folder = QDir::cleanPath(dataFolder);
    if (folder == QDir::cleanPath(defaultDataFolder()))
        return kName;
    constexpr int kHashDigits = 16;
    return kName + u".Library_" + sha256Hex(QFile::encodeName(folder)).left(kHashDigits);
}

SingleInstance::SingleInstance(const QDBusConnection &bus, const QString &name)
    : m_bus(bus)
    , m_name(name)
{
}

SingleInstance::~SingleInstance()
{
    giveNameBack();
}

void SingleInstance::giveNameBack()
{
    if (std::exchange(m_hasName, false))
        m_bus.unregisterService(m_name);
}

SingleInstance::Start SingleInstance::start(const ActivationToken &token)
{
    if (!m_bus.isConnected())
        return Start::First;
    // The object before the name: whoever finds the name may call at once.
    m_bus.registerObject(kObjectPath, this, QDBusConnection::ExportScriptableSlots);
    constexpr int kAttempts = 3; // the other program may end before it answers
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        m_hasName = m_bus.registerService(m_name);
        if (m_hasName)
            return Start::First;
        QDBusMessage call =
            QDBusMessage::createMethodCall(m_name, kObjectPath, kInterface, QStringLiteral("Activate"));
        call.setArguments({platformDataWith(token)});
        const QDBusMessage answer = m_bus.call(call, QDBus::Block, kAnswerTimeoutMs);
        if (answer.type() == QDBusMessage::ReplyMessage)
            return Start::HandedOver;
        if (m_bus.interface()->isServiceRegistered(m_name))
            return Start::NoAnswer;
    }
    return Start::NoAnswer;
}

void SingleInstance::setHandlers(Handlers handlers)
{
    m_handlers = std::move(handlers);
}

void SingleInstance::Activate(const QVariantMap &platformData)
{
    tokenIn(platformData).use();
    m_handlers.activate();
}

void SingleInstance::Open(const QStringList &uris, const QVariantMap &platformData)
{
    tokenIn(platformData).use();
    m_handlers.open(QUrl::fromStringList(uris));
}

void SingleInstance::ActivateAction(const QString &name, const QVariantList &,
                                    const QVariantMap &platformData)
{
    tokenIn(platformData).use();
    if (!m_handlers.runCommand(name)) {
        sendErrorReply(QDBusError::InvalidArgs,
                       QStringLiteral("Quirevault has no command named '%1'").arg(name));
    }
}
