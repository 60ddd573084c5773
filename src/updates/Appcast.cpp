#include "updates/Appcast.h"

#include "base/TextClasses.h"
#include "platform/Ed25519.h"
#include "updates/UpdateError.h"

#include <QXmlStreamReader>

namespace
{
constexpr qsizetype kMaxDisplayVersionCharacters = 40; ///< chosen: it stands in headings

/// The value of the attribute of that local name, in any namespace.
QString attribute(const QXmlStreamAttributes &attributes, QLatin1String name)
{
    for (const QXmlStreamAttribute &each : attributes) {
        if (each.name() == name)
            return each.value().toString().trimmed();
    }
    return {};
}

QString shortened(const QString &text, qsizetype length)
{
    return text.size() <= length ? text : QString(QStringView(text).left(length - 1) % u'…');
}

/// What stands in an item, not yet judged.
struct ItemTexts {
    QString version;
    QString shortVersion;
    QString minimumSystem;
    ReleaseNotes notes;
    QXmlStreamAttributes enclosure;
};

QByteArray signatureFrom(const QString &base64)
{
    const auto decoded =
        QByteArray::fromBase64Encoding(base64.toLatin1(), QByteArray::AbortOnBase64DecodingErrors);
    const bool isSignature = decoded && decoded.decoded.size() == Ed25519PublicKey::kSignatureBytes;
    return isSignature ? decoded.decoded : QByteArray();
}

std::optional<AppcastItem> itemFrom(const ItemTexts &texts)
{
    const QUrl url(attribute(texts.enclosure, QLatin1String("url")), QUrl::StrictMode);
    const auto version = DottedVersion::fromText(texts.version);
    const auto minimumSystem =
        DottedVersion::fromText(texts.minimumSystem.isEmpty() ? QStringLiteral("0") : texts.minimumSystem);
    if (!version || !minimumSystem || !url.isValid() || url.isEmpty())
        return {};
    const QString shortVersion = shortened(onOneLine(texts.shortVersion), kMaxDisplayVersionCharacters);
    return AppcastItem{
        .version = *version,
        .displayVersion = shortVersion.isEmpty() ? version->text() : shortVersion,
        .minimumSystem = *minimumSystem,
        .operatingSystem = attribute(texts.enclosure, QLatin1String("os")).toLower(),
        .notes = texts.notes,
        .url = url,
        .sizeBytes = std::max<qint64>(0, attribute(texts.enclosure, QLatin1String("length")).toLongLong()),
        .signature = signatureFrom(attribute(texts.enclosure, QLatin1String("edSignature")))};
}

class AppcastReader
{
public:
    explicit AppcastReader(const QByteArray &feed)
        : m_xml(feed)
    {
    }

    Result<QList<AppcastItem>> read();

private:
    bool isRss(const char *name) const
    {
        return m_xml.namespaceUri().isEmpty() && m_xml.name() == QLatin1String(name);
    }
    QXmlStreamReader::TokenType readToken();
    bool enterNextChild();
    QString text();
    void skip() { text(); }
    void readChannel();
    std::optional<AppcastItem> readItem();
    void readPart(ItemTexts &item);

    QXmlStreamReader m_xml;
    int m_elements = 0;
    bool m_hasChannel = false;
    QList<AppcastItem> m_items;
};

QXmlStreamReader::TokenType AppcastReader::readToken()
{
    const QXmlStreamReader::TokenType token = m_xml.readNext();
    if (token == QXmlStreamReader::DTD)
        m_xml.raiseError(QStringLiteral("it declares a document type"));
    if (token == QXmlStreamReader::StartElement && ++m_elements > kMaxFeedElements)
        m_xml.raiseError(QStringLiteral("it has too many elements"));
    return m_xml.hasError() ? QXmlStreamReader::Invalid : token;
}

/// Goes to the start of the next element inside the current one; false at the end of the current one.
bool AppcastReader::enterNextChild()
{
    while (!m_xml.atEnd()) {
        const QXmlStreamReader::TokenType token = readToken();
        if (token == QXmlStreamReader::StartElement)
            return true;
        if (token == QXmlStreamReader::EndElement || token == QXmlStreamReader::Invalid)
            return false;
    }
    return false;
}

/// The current element's text without that of elements inside; goes to its end.
QString AppcastReader::text()
{
    QString text;
    for (int depth = 1; depth > 0 && !m_xml.atEnd();) {
        const QXmlStreamReader::TokenType token = readToken();
        if (token == QXmlStreamReader::StartElement)
            ++depth;
        else if (token == QXmlStreamReader::EndElement)
            --depth;
        else if (token == QXmlStreamReader::Characters && depth == 1)
            text += m_xml.text();
    }
    return text.trimmed();
}

void AppcastReader::readPart(ItemTexts &item)
{
    if (isRss("enclosure")) {
        item.enclosure = m_xml.attributes();
        skip();
    } else if (isRss("description")) {
        const QString format = attribute(m_xml.attributes(), QLatin1String("format"));
        item.notes = {.text = shortened(text(), kMaxNotesCharacters),
                      .format = format == u"markdown" ? ReleaseNotes::Format::Markdown
                                                      : ReleaseNotes::Format::Plain};
    } else if (m_xml.name() == u"version") {
        item.version = text();
    } else if (m_xml.name() == u"shortVersionString") {
        item.shortVersion = text();
    } else if (m_xml.name() == u"minimumSystemVersion") {
        item.minimumSystem = text();
    } else {
        skip();
    }
}

std::optional<AppcastItem> AppcastReader::readItem()
{
    ItemTexts item;
    while (enterNextChild())
        readPart(item);
    if (item.version.isEmpty())
        item.version = attribute(item.enclosure, QLatin1String("version"));
    if (item.shortVersion.isEmpty())
        item.shortVersion = attribute(item.enclosure, QLatin1String("shortVersionString"));
    return itemFrom(item);
}

void AppcastReader::readChannel()
{
    m_hasChannel = true;
    while (enterNextChild()) {
        if (!isRss("item")) {
            skip();
        } else if (const std::optional<AppcastItem> item = readItem()) {
            m_items.append(*item);
        }
    }
}

Result<QList<AppcastItem>> AppcastReader::read()
{
    if (enterNextChild() && isRss("rss")) {
        while (enterNextChild())
            isRss("channel") ? readChannel() : skip();
    }
    while (!m_xml.atEnd()) // what follows may still be malformed
        readToken();
    const auto problem = QStringLiteral("The answer is not an update feed");
    if (m_xml.hasError())
        return updateError(UpdateErrorCode::BadFeed, problem,
                           QStringLiteral("line %1: %2").arg(m_xml.lineNumber()).arg(m_xml.errorString()));
    if (!m_hasChannel)
        return updateError(UpdateErrorCode::BadFeed, problem, QStringLiteral("it is not RSS"));
    return m_items;
}
} // namespace

Result<QList<AppcastItem>> parseAppcast(const QByteArray &feed)
{
    if (feed.size() > kMaxFeedBytes)
        return updateError(UpdateErrorCode::BadFeed, QStringLiteral("The update feed is too long"));
    if (feed.count('=') > kMaxFeedAttributes)
        return updateError(UpdateErrorCode::BadFeed,
                           QStringLiteral("The update feed has too many attributes"));
    return AppcastReader(feed).read();
}
