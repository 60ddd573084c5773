#include "base/TextClasses.h"

#include <QStringView>
#include <QTextBoundaryFinder>
#include <algorithm>

bool isAlphanumeric(char32_t character)
{
    return QChar::isLetterOrNumber(character) || QChar::isMark(character);
}

bool isHorizontalSpace(char32_t character)
{
    return character == U'\t' || QChar::category(character) == QChar::Separator_Space;
}

QString trimmedHorizontally(const QString &text)
{
    const QStringView trimmed = trimmedHorizontally(QStringView(text));
    return trimmed.size() == text.size() ? text : trimmed.toString();
}

QStringView trimmedHorizontally(QStringView text)
{
    // Every space separator lies in the basic plane, so code units serve as characters here.
    const auto isSpace = [](QChar c) {
        return isHorizontalSpace(c.unicode());
    };
    const auto first = std::find_if_not(text.begin(), text.end(), isSpace);
    const auto last = std::find_if_not(text.rbegin(), std::make_reverse_iterator(first), isSpace).base();
    return QStringView(first, last);
}

QString onOneLine(QString text)
{
    const auto isDisruptive = [](QChar c) {
        const bool isDirectional =
            (c >= QChar(0x202a) && c <= QChar(0x202e)) || (c >= QChar(0x2066) && c <= QChar(0x2069));
        return isDirectional || c.category() == QChar::Other_Control || c == QChar::LineSeparator ||
               c == QChar::ParagraphSeparator;
    };
    std::replace_if(text.begin(), text.end(), isDisruptive, QChar(u' '));
    return text;
}

QString firstCharacters(const QString &text, qsizetype count)
{
    // A character is at least one code unit, so a short text needs no look at its boundaries.
    if (text.size() <= count)
        return text;
    // The finder analyses all that it is given: offer a window and widen it only for texts rich in marks.
    for (qsizetype window = 2 * count + 64;; window *= 2) {
        const QStringView head = QStringView(text).left(window);
        QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, head.data(), head.size());
        qsizetype end = 0;
        qsizetype found = 0;
        for (; found < count && end >= 0 && end < head.size(); ++found)
            end = finder.toNextBoundary();
        // A boundary at the window's very end may only be where the window cut a character.
        if (end < head.size() || window >= text.size())
            return text.left(end);
    }
}
