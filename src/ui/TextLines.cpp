#include "ui/TextLines.h"

#include <QFontMetrics>
#include <QTextOption>

namespace
{
/// More characters than a line of a card can hold even of the narrowest letter, a line.
constexpr qsizetype kMostCharactersOfLine = 160;

/// Lays out at most `lines` lines and answers where the text that fits ends.
qsizetype breakLines(QTextLayout &layout, int width, int lines)
{
    const QFontMetrics metrics(layout.font());
    qsizetype end = 0;
    layout.beginLayout();
    for (int i = 0; i < lines; ++i) {
        QTextLine line = layout.createLine();
        if (!line.isValid())
            break;
        line.setLineWidth(width);
        line.setPosition({0, i * metrics.height() + metrics.ascent() - line.ascent()});
        end = line.textStart() + line.textLength();
    }
    layout.endLayout();
    return end;
}

std::unique_ptr<QTextLayout> makeLayout(const QString &text, const QList<QTextLayout::FormatRange> &formats,
                                        const QFont &font)
{
    auto layout = std::make_unique<QTextLayout>(text, font);
    layout->setFormats(formats);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    if (text.isRightToLeft())
        option.setAlignment(Qt::AlignRight);
    layout->setTextOption(option);
    layout->setCacheEnabled(true);
    return layout;
}

/// The end of the text to try next when "…" after `end` did not fit: before the last word, or a letter less
/// where the line is one long word.
qsizetype shorterEnd(const QString &text, qsizetype end, qsizetype lineStart)
{
    const qsizetype blank = text.lastIndexOf(u' ', end - 1);
    if (blank > lineStart)
        return blank;
    return text.at(end - 1).isLowSurrogate() ? end - 2 : end - 1;
}
} // namespace

TextLines fitText(const FormattedText &text, const QFont &font, int width, int lines)
{
    const QString beginning = text.text.left(kMostCharactersOfLine * lines);
    auto layout = makeLayout(beginning, text.formats, font);
    qsizetype end = breakLines(*layout, width, lines);
    if (end >= beginning.size())
        return {std::move(layout), false};
    const qsizetype lastLine = layout->lineAt(lines - 1).textStart();
    while (end > lastLine) {
        const QString cut = beginning.left(end).trimmed() + u'…';
        layout = makeLayout(cut, text.formats, font);
        if (breakLines(*layout, width, lines) >= cut.size())
            break;
        end = shorterEnd(beginning, end, lastLine);
    }
    return {std::move(layout), true};
}
