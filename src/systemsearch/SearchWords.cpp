#include "systemsearch/SearchWords.h"

#include "base/TextClasses.h"

#include <algorithm>
#include <utility>

namespace
{

QString wordsOf(const QString &term)
{
    QString words;
    bool isBetweenWords = true;
    // A cut through a pair of surrogates leaves a lone one, which is no letter.
    for (const char32_t character : term.left(kLongestTerm).toUcs4()) {
        if (!isAlphanumeric(character)) {
            isBetweenWords = true;
            continue;
        }
        if (std::exchange(isBetweenWords, false) && !words.isEmpty())
            words += u' ';
        words += QChar::fromUcs4(character);
    }
    return words;
}

bool hasLetterOrNumber(const QString &words)
{
    const auto characters = words.toUcs4();
    return std::any_of(characters.begin(), characters.end(),
                       [](char32_t character) { return QChar::isLetterOrNumber(character); });
}

} // namespace

QStringList searchWords(const QStringList &terms)
{
    QStringList found;
    for (const QString &term : terms) {
        if (found.size() == kMostTerms)
            break;
        const QString words = wordsOf(term);
        if (hasLetterOrNumber(words))
            found.append(words);
    }
    return found;
}
