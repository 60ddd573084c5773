#include "ui/CardText.h"

#include "reader/Fonts.h"
#include "ui/CardWords.h"

#include <QFontMetrics>
#include <QPainter>

namespace
{
/// Of secondary text, so that it steps back in light and dark alike.
constexpr double kSecondaryOpacity = 0.62;
/// Of the accent colour behind a matched word.
constexpr double kMatchOpacity = 0.25;
/// Of the small font to the title's.
constexpr double kSmallScale = 0.88;

QColor withAlpha(QColor colour, double alpha)
{
    colour.setAlphaF(float(alpha));
    return colour;
}

QTextCharFormat matchFormat(const QPalette &palette)
{
    QTextCharFormat format;
    format.setFontWeight(QFont::DemiBold);
    format.setForeground(palette.text());
    format.setBackground(withAlpha(palette.color(QPalette::Highlight), kMatchOpacity));
    return format;
}

FormattedText passageText(const QList<SnippetSpan> &spans, const QPalette &palette)
{
    FormattedText passage;
    for (const SnippetSpan &span : spans) {
        if (span.isMatch)
            passage.formats.append({int(passage.text.size()), int(span.text.size()), matchFormat(palette)});
        passage.text += span.text;
    }
    return passage;
}

} // namespace

QColor secondaryColour(const QPalette &palette)
{
    return withAlpha(palette.color(QPalette::Text), kSecondaryOpacity);
}

QString elidedByline(const Paper &paper, const QFont &font, int width)
{
    const QFontMetrics metrics(font);
    const QString authors = paper.authors.left(width).simplified();
    if (!paper.year)
        return metrics.elidedText(authors, Qt::ElideRight, width);
    const QString year = QString::number(*paper.year);
    if (authors.isEmpty())
        return year;
    const QString tail = u" · " + year;
    return metrics.elidedText(authors, Qt::ElideRight, width - metrics.horizontalAdvance(tail)) + tail;
}

CardStyle::CardStyle(const QFont &base, CardKind ofKind)
    : titleFont(base)
    , smallFont(scaledFont(base, kSmallScale))
    , kind(ofKind)
    , titleLine(QFontMetrics(titleFont).height())
    , smallLine(QFontMetrics(smallFont).height())
{
}

int CardStyle::height() const
{
    const int plain = kCoverHeight + kCoverGap + kTitleLines * titleLine + kTextGap + smallLine;
    return kind == CardKind::Paper ? plain : plain + 2 * kTextGap + (kPassageLines + 1) * smallLine;
}

CardText::CardText(const PaperCard &card, const QString &query, const CardStyle &style,
                   const QPalette &palette)
    : m_bottom(CardStyle::kCoverHeight + CardStyle::kCoverGap)
{
    const QColor secondary = secondaryColour(palette);
    const QString byline = elidedByline(card.paper, style.smallFont, CardStyle::kWidth);
    m_isTitleCut = add({card.paper.title.simplified(), {}}, style.titleFont, CardStyle::kTitleLines,
                       palette.color(QPalette::Text));
    add({byline, {}}, style.smallFont, 1, secondary);
    if (!card.passage)
        return;
    add(passageText(passageSpans(*card.passage, query), palette), style.smallFont, CardStyle::kPassageLines,
        secondary);
    add({passagePlace(card), {}}, style.smallFont, 1, secondary);
}

bool CardText::add(const FormattedText &text, const QFont &font, int lines, const QColor &colour)
{
    if (text.text.isEmpty())
        return false;
    TextLines fitted = fitText(text, font, CardStyle::kWidth, lines);
    const int height = fitted.layout->lineCount() * QFontMetrics(font).height();
    m_blocks.push_back({std::move(fitted.layout), m_bottom, colour});
    m_bottom += height + CardStyle::kTextGap;
    return fitted.isCut;
}

void CardText::paint(QPainter &painter, QPointF topLeft) const
{
    for (const Block &block : m_blocks) {
        painter.setPen(block.colour);
        block.layout->draw(&painter, topLeft + QPointF(0, block.top));
    }
}
