#include "indexing/OpenLibraryBookService.h"

#include "base/Log.h"
#include "platform/HttpClient.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QUrl>

namespace
{
constexpr char kAddressVariable[] = "QUIREVAULT_OPENLIBRARY_URL";

QStringList namesIn(const QJsonValue &entries)
{
    QStringList names;
    for (const QJsonValue &entry : entries.toArray()) {
        const QJsonValue name = entry.toObject().value(u"name");
        if (name.isString())
            names.append(name.toString());
    }
    return names;
}

/// The first four digits in a row of a date in any form; "0999" is the year 999.
std::optional<qint64> yearIn(const QString &date)
{
    static const QRegularExpression fourDigits(QStringLiteral("\\d{4}"),
                                               QRegularExpression::UseUnicodePropertiesOption);
    const QRegularExpressionMatch match = fourDigits.match(date);
    bool isNumber = false;
    const qint64 year = match.captured().toLongLong(&isNumber);
    return isNumber ? std::optional(year) : std::nullopt;
}

BookRecord recordOf(const QJsonObject &book)
{
    return {book.value(u"title").toString(), namesIn(book.value(u"authors")).join(u", "),
            yearIn(book.value(u"publish_date").toString()), namesIn(book.value(u"subjects"))};
}

void logFailure(const Error &error)
{
    logLine(u"PDFIndexer: OpenLibrary lookup failed: " + error.message());
}
} // namespace

OpenLibraryBookService::OpenLibraryBookService(HttpClient &http, const QString &baseAddress)
    : m_http(http)
    , m_baseAddress(baseAddress)
{
    while (m_baseAddress.endsWith(u'/'))
        m_baseAddress.chop(1);
}

QString OpenLibraryBookService::configuredAddress()
{
    return qEnvironmentVariable(kAddressVariable, QStringLiteral("https://openlibrary.org"));
}

std::optional<BookRecord> OpenLibraryBookService::lookupBook(const QString &isbn, std::stop_token stop)
{
    const QUrl url(m_baseAddress + u"/api/books?bibkeys=ISBN:" + isbn + u"&format=json&jscmd=data",
                   QUrl::StrictMode);
    if (m_baseAddress.isEmpty() || !url.isValid())
        return {};
    const Result<QByteArray> answer = m_http.fetch(url, kTimeout, stop);
    if (!answer) {
        if (!isCancelled(answer.error()))
            logFailure(answer.error());
        return {};
    }
    const Result<std::optional<BookRecord>> record = parseBookAnswer(*answer, isbn);
    if (!record) {
        logFailure(record.error());
        return {};
    }
    return *record;
}

Result<std::optional<BookRecord>> parseBookAnswer(const QByteArray &answer, const QString &isbn)
{
    QJsonParseError problem;
    const QJsonDocument document = QJsonDocument::fromJson(answer, &problem);
    if (problem.error != QJsonParseError::NoError)
        return Error{QStringLiteral("OpenLibrary"), problem.error, problem.errorString(), {}};
    const QJsonValue book = document.object().value(u"ISBN:" + isbn);
    if (!book.isObject())
        return std::optional<BookRecord>();
    return std::optional(recordOf(book.toObject()));
}
