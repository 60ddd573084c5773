#include "store/PhrasePrefixes.h"

#include <QRegularExpression>

namespace
{
/// A quoted phrase, a bare word, or (captured) one other character.
const QRegularExpression &tokenPattern()
{
    static const QRegularExpression pattern(
        QStringLiteral(R"re("(?:[^"]|"")*"|[\w\x{80}-\x{10FFFF}]+|(\S))re"));
    return pattern;
}

bool isOperator(const QString &token)
{
    return token == u"AND" || token == u"OR" || token == u"NOT";
}
} // namespace

QStringList phrasePrefixes(const QString &expression)
{
    QStringList prefixes;
    QString previous;
    for (auto tokens = tokenPattern().globalMatch(expression); tokens.hasNext();) {
        const QRegularExpressionMatch match = tokens.next();
        const QString token = match.captured();
        if (!match.hasCaptured(1)) {
            const bool isDistance = previous == u",";
            if (!isDistance && !isOperator(token))
                prefixes.append(QString());
        } else if (token == u"*" && !prefixes.isEmpty()) {
            prefixes.last() = previous.remove(u'"');
        } else if (token == u"(" && previous == u"NEAR") {
            prefixes.removeLast();
        } else if (!QStringLiteral("(),").contains(token)) {
            return {};
        }
        previous = token;
    }
    return prefixes;
}
