#include "reader/PDFOpenRequest.h"

namespace
{

/// Takes the fields of a request out of its JSON object and remembers the first that is not as it should be.
class Fields
{
public:
    explicit Fields(const QJsonObject &object)
        : m_object(object)
    {
    }

    std::optional<QString> text(QStringView key)
    {
        const QJsonValue value = m_object.value(key);
        if (value.isUndefined() || value.isNull())
            return {};
        if (!value.isString())
            refuse(key);
        return value.toString();
    }

    std::optional<qint64> integer(QStringView key)
    {
        const QJsonValue value = m_object.value(key);
        if (value.isUndefined() || value.isNull())
            return {};
        // The value answers its argument when it is no integer, so two arguments tell that from a real one.
        if (value.toInteger(0) != value.toInteger(1))
            refuse(key);
        return value.toInteger();
    }

    void refuse(QStringView key)
    {
        if (m_refused.isEmpty())
            m_refused = key.toString();
    }

    /// The key of the first bad field; empty when all are good.
    const QString &refused() const { return m_refused; }

private:
    const QJsonObject &m_object;
    QString m_refused;
};

} // namespace

size_t qHash(const PDFOpenRequest &request, size_t seed)
{
    return qHashMulti(seed, request.id, request.url, request.page.value_or(0),
                      request.paperId.value_or(QString()), request.searchText.value_or(QString()),
                      request.highlightText.value_or(QString()));
}

QJsonObject toJson(const PDFOpenRequest &request)
{
    QJsonObject json{
        {QStringLiteral("id"), request.id.toString(QUuid::WithoutBraces).toUpper()},
        {QStringLiteral("url"), request.url.toString(QUrl::FullyEncoded)},
    };
    const auto insert = [&json](const QString &key, const auto &value) {
        if (value)
            json.insert(key, *value);
    };
    insert(QStringLiteral("page"), request.page);
    insert(QStringLiteral("paperId"), request.paperId);
    insert(QStringLiteral("searchText"), request.searchText);
    insert(QStringLiteral("highlightText"), request.highlightText);
    return json;
}

Result<PDFOpenRequest> openRequestFromJson(const QJsonObject &json)
{
    Fields fields(json);
    const PDFOpenRequest request{
        .id = QUuid::fromString(fields.text(u"id").value_or(QString())),
        .url = QUrl(fields.text(u"url").value_or(QString()), QUrl::StrictMode),
        .page = fields.integer(u"page"),
        .paperId = fields.text(u"paperId"),
        .searchText = fields.text(u"searchText"),
        .highlightText = fields.text(u"highlightText"),
    };
    if (request.id.isNull())
        fields.refuse(u"id");
    if (!request.url.isValid())
        fields.refuse(u"url");
    if (fields.refused().isEmpty())
        return request;
    return Error{QStringLiteral("PDFOpenRequest"), 1,
                 QStringLiteral("A window to open again is not described as it should be"), fields.refused()};
}
