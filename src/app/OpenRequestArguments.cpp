#include "app/OpenRequestArguments.h"

#include <QJsonDocument>

namespace
{

constexpr char kOption[] = "--open-request";

Error refusal(const QString &description, const QString &reason = {})
{
    return {QStringLiteral("OpenRequestArguments"), 1, description, reason};
}

} // namespace

QByteArray toBytes(const PDFOpenRequest &request)
{
    return QJsonDocument(toJson(request)).toJson(QJsonDocument::Compact);
}

Result<PDFOpenRequest> openRequestFromBytes(const QByteArray &json)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (!document.isObject()) {
        return refusal(QStringLiteral("The window to open is not described in JSON"),
                       error.error == QJsonParseError::NoError ? QString() : error.errorString());
    }
    Result<PDFOpenRequest> request = openRequestFromJson(document.object());
    if (request && !request->url.isLocalFile())
        return refusal(QStringLiteral("Only files can be opened"), request->url.toString());
    return request;
}

QByteArrayList toArguments(const QList<PDFOpenRequest> &requests)
{
    QByteArrayList arguments;
    for (const PDFOpenRequest &request : requests)
        arguments << kOption << toBytes(request);
    return arguments;
}

Result<QList<PDFOpenRequest>> openRequestsFromArguments(const QByteArrayList &arguments)
{
    QList<PDFOpenRequest> requests;
    for (qsizetype i = 0; i < arguments.size(); i += 2) {
        if (arguments[i] != kOption)
            return refusal(QStringLiteral("Unknown argument"), QString::fromUtf8(arguments[i]));
        const Result<PDFOpenRequest> request = openRequestFromBytes(arguments.value(i + 1));
        if (!request)
            return request.error();
        requests.append(*request);
    }
    return requests;
}
