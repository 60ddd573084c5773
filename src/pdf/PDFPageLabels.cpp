#include "pdf/PDFPageLabels.h"

#include <algorithm>

namespace
{
// Beyond them the numerals only grow longer; nobody prints them.
constexpr qint64 kMaxRoman = 9999;
constexpr qint64 kLetters = 26;
constexpr qint64 kMaxLetters = 10 * kLetters;

struct Numeral {
    int value;
    const char *letters;
};
constexpr Numeral kNumerals[] = {{1000, "m"}, {900, "cm"}, {500, "d"}, {400, "cd"}, {100, "c"},
                                 {90, "xc"},  {50, "l"},   {40, "xl"}, {10, "x"},   {9, "ix"},
                                 {5, "v"},    {4, "iv"},   {1, "i"}};

QString roman(qint64 number)
{
    QString out;
    for (const Numeral &numeral : kNumerals) {
        for (; number >= numeral.value; number -= numeral.value)
            out += QLatin1String(numeral.letters);
    }
    return out;
}

/// a to z, then aa to zz, then aaa to zzz.
QString letters(qint64 number)
{
    return QString(qsizetype((number - 1) / kLetters + 1), QChar(char16_t(u'a' + (number - 1) % kLetters)));
}

QString numeral(PDFPageLabels::Style style, qint64 number)
{
    using Style = PDFPageLabels::Style;
    const bool isRoman = style == Style::UpperRoman || style == Style::LowerRoman;
    const bool isLetter = style == Style::UpperLetters || style == Style::LowerLetters;
    const bool isUpper = style == Style::UpperRoman || style == Style::UpperLetters;
    if (style == Style::None)
        return {};
    QString out = QString::number(number);
    if (isRoman && number <= kMaxRoman)
        out = roman(number);
    else if (isLetter && number <= kMaxLetters)
        out = letters(number);
    return isUpper ? out.toUpper() : out;
}
} // namespace

PDFPageLabels::PDFPageLabels(const QList<Range> &ranges)
    : m_ranges(ranges)
{
}

QString PDFPageLabels::label(qint64 index) const
{
    const auto next =
        std::upper_bound(m_ranges.begin(), m_ranges.end(), index,
                         [](qint64 page, const Range &range) { return page < range.firstPage; });
    if (next == m_ranges.begin())
        return QString::number(index + 1);
    const Range &range = *std::prev(next);
    return range.prefix + numeral(range.style, range.firstNumber + (index - range.firstPage));
}
