#include "app/SessionManager.h"

#include "base/Log.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <algorithm>

namespace
{

void logLoadFailure(const QString &path, const QString &reason)
{
    logLine(u"Failed to load session: " + path + u": " + reason);
}

QList<PDFOpenRequest>::iterator findRequest(QList<PDFOpenRequest> &requests, const QUuid &id)
{
    return std::find_if(requests.begin(), requests.end(),
                        [&](const PDFOpenRequest &request) { return request.id == id; });
}

QList<PDFOpenRequest> requestsIn(const QJsonArray &array, const QString &path)
{
    QList<PDFOpenRequest> requests;
    for (const QJsonValue element : array) {
        const Result<PDFOpenRequest> request = openRequestFromJson(element.toObject());
        if (!request)
            logLoadFailure(path, request.error().message());
        else if (findRequest(requests, request->id) == requests.end())
            requests.append(*request);
    }
    return requests;
}

QList<PDFOpenRequest> loadSession(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        logLoadFailure(path, file.errorString());
        return {};
    }
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll(), &error);
    if (document.isArray())
        return requestsIn(document.array(), path);
    logLoadFailure(path, error.error == QJsonParseError::NoError ? QStringLiteral("not a list of requests")
                                                                 : error.errorString());
    return {};
}

} // namespace

SessionManager::SessionManager(const QString &file, const Clock &clock)
    : sessionFile(file)
    , m_clock(clock)
{
    QDir().mkpath(QFileInfo(file).absolutePath()); // a failure shows when the file is written
    activeSessions = loadSession(file);
}

void SessionManager::registerRequest(const PDFOpenRequest &request)
{
    QList<PDFOpenRequest> requests = activeSessions;
    if (findRequest(requests, request.id) == requests.end())
        requests.append(request);
    activeSessions = requests;
    scheduleSave();
}

void SessionManager::update(const PDFOpenRequest &request)
{
    QList<PDFOpenRequest> requests = activeSessions;
    const auto listed = findRequest(requests, request.id);
    if (listed == requests.end())
        requests.append(request);
    else
        *listed = request;
    activeSessions = requests;
    scheduleSave();
}

void SessionManager::unregister(const QUuid &id)
{
    QList<PDFOpenRequest> requests = activeSessions;
    requests.removeIf([&](const PDFOpenRequest &request) { return request.id == id; });
    activeSessions = requests;
    scheduleSave();
}

void SessionManager::scheduleSave()
{
    m_saveTask = m_clock.callAfter(kSessionSaveDelay, [this] { saveNow(); });
}

void SessionManager::saveNow()
{
    m_saveTask.reset();
    QJsonArray array;
    for (const PDFOpenRequest &request : activeSessions.value())
        array.append(toJson(request));
    QFile file(sessionFile);
    const QByteArray bytes = QJsonDocument(array).toJson(QJsonDocument::Compact);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush())
        logLine(u"Failed to save session: " + sessionFile + u": " + file.errorString());
}
