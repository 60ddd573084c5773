#include "search/FTSQueryBuilder.h"

#include "base/TextClasses.h"

#include <QRegularExpression>
#include <QStringList>
#include <algorithm>
#include <string>

namespace
{
constexpr auto kUnicode = QRegularExpression::UseUnicodePropertiesOption;

const QRegularExpression &tokenPattern()
{
    static const QRegularExpression pattern(QStringLiteral(R"(NEAR\s*\(([^)]*)\)|"[^"]*"|\S+)"),
                                            QRegularExpression::CaseInsensitiveOption | kUnicode);
    return pattern;
}

/// The tokens of a NEAR group, and of text in which no group can end.
const QRegularExpression &plainTokenPattern()
{
    static const QRegularExpression pattern(QStringLiteral(R"("[^"]*"|\S+)"), kUnicode);
    return pattern;
}

const QRegularExpression &distancePattern()
{
    static const QRegularExpression pattern(QStringLiteral(R"(,\s*(\d+)\s*$)"), kUnicode);
    return pattern;
}

bool isOperator(const QString &fragment)
{
    return fragment == u"AND" || fragment == u"OR" || fragment == u"NOT";
}

QString trimmedToAlphanumerics(const QString &token)
{
    const std::u32string characters = token.toStdU32String();
    const auto first = std::find_if(characters.begin(), characters.end(), isAlphanumeric);
    const auto last =
        std::find_if(characters.rbegin(), std::make_reverse_iterator(first), isAlphanumeric).base();
    return QString::fromStdU32String(std::u32string(first, last));
}

bool isQuotedPhrase(const QString &token)
{
    return token.size() >= 2 && token.startsWith(u'"') && token.endsWith(u'"');
}

/// The phrase as typed; empty when nothing stands between its quotes.
QString phraseFragment(const QString &token)
{
    return trimmedHorizontally(token.mid(1, token.size() - 2)).isEmpty() ? QString() : token;
}

/// The word as a prefix term; empty when it holds no letter, mark or number.
QString termFragment(QString token)
{
    const QString term = trimmedToAlphanumerics(token.remove(u'"'));
    if (term.isEmpty())
        return {};
    if (needsQuoting(term))
        return u'"' + term + u"\"*";
    return term + u'*';
}

QString phraseOrTerm(const QString &token)
{
    return isQuotedPhrase(token) ? phraseFragment(token) : termFragment(token);
}

QString wordFragment(const QString &token)
{
    const QString upper = token.toUpper();
    return isOperator(upper) ? upper : phraseOrTerm(token);
}

void appendUnlessEmpty(QStringList &fragments, const QString &fragment)
{
    if (!fragment.isEmpty())
        fragments.append(fragment);
}

void appendPlainTokens(QStringList &fragments, const QString &text, qsizetype from,
                       QString (*convert)(const QString &))
{
    for (auto matches = plainTokenPattern().globalMatch(text, from); matches.hasNext();)
        appendUnlessEmpty(fragments, convert(matches.next().captured()));
}

QStringList fragmentsOf(const QString &text)
{
    // A group that is never closed makes the pattern look through all the rest, once for every "NEAR(".
    // Behind the last parenthesis no group can end, so a pattern without groups finds the same tokens there.
    const qsizetype lastGroupEnd = text.lastIndexOf(u')');
    QStringList fragments;
    qsizetype from = 0;
    while (from <= lastGroupEnd) {
        const auto match = tokenPattern().match(text, from, QRegularExpression::NormalMatch,
                                                QRegularExpression::DontCheckSubjectStringMatchOption);
        if (!match.hasMatch())
            return fragments;
        if (match.hasCaptured(1))
            appendUnlessEmpty(fragments, buildNearClause(match.captured(1)).value_or(QString()));
        else
            appendUnlessEmpty(fragments, wordFragment(match.captured()));
        from = match.capturedEnd();
    }
    appendPlainTokens(fragments, text, from, wordFragment);
    return fragments;
}

void removeDanglingOperators(QStringList &fragments)
{
    while (!fragments.isEmpty() && isOperator(fragments.last()))
        fragments.removeLast();
    // A leading NOT stays; FTS5 rejects it and the search answers with nothing, rather than with what was
    // to be left out.
    while (!fragments.isEmpty() && isOperator(fragments.first()) && fragments.first() != u"NOT")
        fragments.removeFirst();
}
} // namespace

QString buildFTSQuery(const QString &text)
{
    // By way of UTF-8, which half a surrogate pair does not survive: patterns refuse text that holds one.
    QString plain = QString::fromUtf8(text.toUtf8());
    plain.replace(QChar(0x201C), u'"').replace(QChar(0x201D), u'"');
    if (!tokenPattern().isValid())
        return plain.remove(u'"');
    QStringList fragments = fragmentsOf(plain);
    removeDanglingOperators(fragments);
    return fragments.join(u' ');
}

std::optional<QString> buildNearClause(const QString &inner)
{
    QString terms = inner;
    QString distance;
    if (const auto match = distancePattern().match(inner); match.hasMatch()) {
        for (const QChar c : match.captured()) {
            if (c.isNumber())
                distance += c;
        }
        terms.remove(match.capturedStart(), match.capturedLength());
    }
    if (!plainTokenPattern().isValid())
        return std::nullopt;
    QStringList fragments;
    appendPlainTokens(fragments, terms, 0, phraseOrTerm);
    if (fragments.isEmpty())
        return std::nullopt;
    if (!distance.isEmpty())
        distance.prepend(u", ");
    return QString(u"NEAR(" + fragments.join(u' ') + distance + u')');
}

bool needsQuoting(const QString &term)
{
    const std::u32string characters = term.toStdU32String();
    return !std::all_of(characters.begin(), characters.end(),
                        [](char32_t character) { return character == U'_' || isAlphanumeric(character); });
}
