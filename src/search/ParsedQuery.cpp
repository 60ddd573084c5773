#include "search/ParsedQuery.h"

#include "base/DecimalInteger.h"
#include "base/TextClasses.h"

#include <QStringList>
#include <algorithm>

namespace
{
bool isDoubleQuote(QChar c)
{
    return c == u'"' || c == QChar(0x201C) || c == QChar(0x201D);
}

/// Cuts at white space outside quotes; quotes stay in the tokens, made plain.
QStringList tokensOf(const QString &text)
{
    QStringList tokens;
    QString token;
    bool isInQuotes = false;
    const auto endToken = [&] {
        if (!token.isEmpty())
            tokens.append(token);
        token.clear();
    };
    for (const QChar c : text) {
        if (isDoubleQuote(c)) {
            isInQuotes = !isInQuotes;
            token += u'"';
        } else if (isInQuotes || !c.isSpace()) {
            token += c;
        } else {
            endToken();
        }
    }
    endToken();
    return tokens;
}

/// Sets the field that `key` names; answers false when there is none of that name.
bool setField(ParsedQuery &query, const QString &key, const QString &value)
{
    if (key == u"title")
        query.title = value;
    else if (key == u"author" || key == u"authors")
        query.author = value;
    else if (key == u"filename" || key == u"file")
        query.filename = value;
    else if (key == u"year")
        query.year = decimalInteger(value);
    else
        return false;
    return true;
}
} // namespace

ParsedQuery::ParsedQuery(const QString &text)
{
    QStringList words;
    for (const QString &token : tokensOf(text)) {
        const qsizetype colon = token.indexOf(u':');
        if (colon <= 0) {
            words.append(token);
            continue;
        }
        const QString value = token.mid(colon + 1).remove(u'"');
        // A key without a value is dropped, known or not: the person is still typing.
        if (!value.isEmpty() && !setField(*this, token.left(colon).toLower(), value))
            words.append(token);
    }
    fullText = trimmedHorizontally(words.join(u' '));
}
