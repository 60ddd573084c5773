#include "app/SingleInstance.h"

#include "app/OpenRequestArguments.h"
#include "platform/ApplicationInterface.h"

#include <QDBusConnectionInterface>
#include <utility>

namespace
{

constexpr char kWaylandVariable[] = "XDG_ACTIVATION_TOKEN";
constexpr char kX11Variable[] = "DESKTOP_STARTUP_ID";
const auto kWaylandKey = QString::fromLatin1(kActivationTokenKey);
const auto kX11Key = QString::fromLatin1(kStartupIdKey);

/// Chosen: longer than a start with a large library may take, shorter than a person's patience.
constexpr int kAnswerTimeoutMs = 10'000;

/// Of a text from another program, in UTF-16 units. Chosen: longer than anything a person searches for.
constexpr qsizetype kLongestText = 1000;

QString takeVariable(const char *name)
{
    const QString value = qEnvironmentVariable(name);
    qunsetenv(name);
    return value;
}

/// Of a request as JSON, in UTF-16 units. Chosen: a path and two passages, many times over.
constexpr qsizetype kLongestRequest = 64 * 1024;

/// None where it is longer than any desktop's: the environment of every program started later would hold it.
QString tokenIn(const QVariantMap &platformData, const QString &key)
{
    const QString token = platformData.value(key).toString();
    return token.size() <= kLongestText ? token : QString();
}

ActivationToken tokenIn(const QVariantMap &platformData)
{
    return {.wayland = tokenIn(platformData, kWaylandKey), .x11 = tokenIn(platformData, kX11Key)};
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
    return applicationBusName(dataFolder);
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
    if (std::exchange(m_hasApplicationName, false))
        m_bus.unregisterService(QLatin1String(kApplicationId));
}

void SingleInstance::registerObject()
{
    m_bus.registerObject(QLatin1String(kApplicationObjectPath), this, QDBusConnection::ExportScriptableSlots);
}

SingleInstance::Start SingleInstance::start(const ActivationToken &token,
                                            const QList<PDFOpenRequest> &requests)
{
    if (!m_bus.isConnected())
        return Start::First;
    registerObject();            // before the name: whoever finds the name may call at once
    constexpr int kAttempts = 3; // the other program may end before it answers
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        m_hasName = m_bus.registerService(m_name);
        if (m_hasName)
            return Start::First;
        const QDBusMessage answer = handOver(token, requests);
        if (answer.type() == QDBusMessage::ReplyMessage)
            return Start::HandedOver;
        if (m_bus.interface()->isServiceRegistered(m_name))
            return Start::NoAnswer;
    }
    return Start::NoAnswer;
}

SingleInstance::Start SingleInstance::startService()
{
    const bool isUsualLibrary = m_name == QLatin1String(kApplicationId);
    if (isUsualLibrary && m_bus.isConnected()) {
        registerObject();
        m_hasName = m_bus.registerService(m_name);
        return m_hasName ? Start::First : Start::HandedOver;
    }
    const Start outcome = start({});
    if (outcome == Start::First && m_bus.isConnected())
        m_hasApplicationName = m_bus.registerService(QLatin1String(kApplicationId));
    return outcome;
}

QDBusMessage SingleInstance::handOver(const ActivationToken &token, const QList<PDFOpenRequest> &requests)
{
    const QVariantMap platformData = platformDataWith(token);
    if (requests.isEmpty())
        return call(QStringLiteral("Activate"), {platformData});
    QDBusMessage answer;
    for (const PDFOpenRequest &request : requests) {
        const QVariantList parameter{QString::fromUtf8(toBytes(request))};
        answer = call(QStringLiteral("ActivateAction"),
                      {QLatin1String(kOpenRequestAction), QVariant::fromValue(parameter), platformData});
        if (answer.type() != QDBusMessage::ReplyMessage)
            break;
    }
    return answer;
}

QDBusMessage SingleInstance::call(const QString &method, const QVariantList &arguments)
{
    QDBusMessage message = QDBusMessage::createMethodCall(m_name, QLatin1String(kApplicationObjectPath),
                                                          QLatin1String(kApplicationInterface), method);
    message.setArguments(arguments);
    return m_bus.call(message, QDBus::Block, kAnswerTimeoutMs);
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

void SingleInstance::ActivateAction(const QString &name, const QVariantList &parameter,
                                    const QVariantMap &platformData)
{
    tokenIn(platformData).use();
    if (runTextAction(name, parameter.value(0).toString()) || m_handlers.runCommand(name))
        return;
    sendErrorReply(QDBusError::InvalidArgs, QStringLiteral("Quirevault has no command named '%1'").arg(name));
}

/// False when there is no such action.
bool SingleInstance::runTextAction(const QString &name, const QString &text)
{
    if (name == QLatin1String(kOpenRequestAction))
        openReader(text.left(kLongestRequest)); // what is cut is no JSON any more, hence refused
    else if (name == QLatin1String(kOpenPaperAction) && m_handlers.openPaper)
        m_handlers.openPaper(text.left(kLongestText));
    else if (name == QLatin1String(kSearchAction) && m_handlers.search)
        m_handlers.search(text.left(kLongestText));
    else
        return false;
    return true;
}

void SingleInstance::openReader(const QString &json)
{
    const Result<PDFOpenRequest> request = openRequestFromBytes(json.toUtf8());
    if (request)
        m_handlers.openReader(*request);
    else
        sendErrorReply(QDBusError::InvalidArgs, request.error().message());
}
