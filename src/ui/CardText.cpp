#include "ui/CardText.h"

#include "ui/CardWords.h"
#include "ui/TextLines.h"

#include <QFontMetrics>
#include <QPainter>

namespace
{
/// Of secondary text, so that it steps back in light and dark alike.
constexpr double kSecondaryOpacity = 0.62;
/// Of the accent colour behind a matched word.
constexpr double kMatchOpacity = 0.25;

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

QFont smaller(QFont font)
{
    constexpr double kScale = 0.88;
    if (font.pointSizeF() > 0)
        font.setPointSizeF(font.pointSizeF() * kScale);
    else
        font.setPixelSize(qRound(font.pixelSize() * kScale));
    return font;
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
    , smallFont(smaller(base))
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
    : m_isTitleCut(addTitle(card.paper.title, style, palette))
{
    addByline(card.paper, style, palette);
    if (card.passage)
        addPassage(card, query, style, palette);
}

bool CardText::addTitle(const QString &title, const CardStyle &style, const QPalette &palette)
{
    TextLines lines =
        fitText(title.simplified(), {}, style.titleFont, CardStyle::kWidth, CardStyle::kTitleLines);
    const bool isCut = lines.isCut;
    add(std::move(lines.layout), CardStyle::kCoverHeight + CardStyle::kCoverGap,
        palette.color(QPalette::Text));
    return isCut;
}

void CardText::addByline(const Paper &paper, const CardStyle &style, const QPalette &palette)
{
    const QString byline = elidedByline(paper, style.smallFont, CardStyle::kWidth);
    const auto &titleLines = *m_blocks.front().layout;
    add(fitText(byline, {}, style.smallFont, CardStyle::kWidth, 1).layout,
        m_blocks.front().top + titleLines.lineCount() * style.titleLine + CardStyle::kTextGap,
        secondaryColour(palette));
}

void CardText::addPassage(const PaperCard &card, const QString &query, const CardStyle &style,
                          const QPalette &palette)
{
    QString text;
    QList<QTextLayout::FormatRange> formats;
    for (const SnippetSpan &span : passageSpans(*card.passage, query)) {
        if (span.isMatch)
            formats.append({int(text.size()), int(span.text.size()), matchFormat(palette)});
        text += span.text;
    }
    const int top = m_blocks.back().top + style.smallLine + CardStyle::kTextGap;
    const QColor colour = secondaryColour(palette);
    add(fitText(text, formats, style.smallFont, CardStyle::kWidth, CardStyle::kPassageLines).layout, top,
        colour);
    const int place = top + m_blocks.back().layout->lineCount() * style.smallLine + CardStyle::kTextGap;
    add(fitText(passagePlace(card), {}, style.smallFont, CardStyle::kWidth, 1).layout, place, colour);
}

void CardText::add(std::unique_ptr<QTextLayout> layout, int top, const QColor &colour)
{
    m_blocks.push_back({std::move(layout), top, colour});
}

void CardText::paint(QPainter &painter, QPointF topLeft) const
{
    for (const Block &block : m_blocks) {
        painter.setPen(block.colour);
        block.layout->draw(&painter, topLeft + QPointF(0, block.top));
    }
}
