#include "ui/CardPainter.h"

#include "ui/CardWords.h"
#include "ui/PaperGridItem.h"
#include "ui/Symbols.h"

#include <QPainter>
#include <QPainterPath>

namespace
{
constexpr double kRingRadius = 10;
constexpr double kRingWidth = 2;
constexpr double kCoverRadius = 3;
constexpr double kPlaceholderRadius = 8;
constexpr int kDocumentSize = 48;
constexpr double kSymbolOpacity = 0.5; ///< of the placeholder's
constexpr int kMissingSize = 16;

QColor faded(QColor colour, double opacity)
{
    colour.setAlphaF(colour.alphaF() * float(opacity));
    return colour;
}

/// Where a picture stands in the box: as large as it fits, on the middle of the box's foot, on whole pixels
/// of the screen so that it stays sharp.
QRectF fitted(QSizeF picture, QRectF box, double scale)
{
    const QSizeF size = picture.scaled(box.size(), Qt::KeepAspectRatio);
    const double left = std::round((box.left() + (box.width() - size.width()) / 2) * scale) / scale;
    const double top = std::round((box.bottom() - size.height()) * scale) / scale;
    return {QPointF(left, top), size};
}
} // namespace

CardPainter::CardPainter(const CardStyle &style, const QPalette &palette, double scale)
    : m_style(style)
    , m_palette(palette)
    , m_coverBox((QSizeF(CardStyle::kWidth, CardStyle::kCoverHeight) * scale).toSize())
    , m_document(symbolIcon(Symbol::Document).pixmap(QSize(kDocumentSize, kDocumentSize), scale))
    , m_missing(symbolIcon(Symbol::MissingFile).pixmap(QSize(kMissingSize, kMissingSize), scale))
{
}

void CardPainter::paint(QPainter &painter, QRectF card, const PaperGridItem &item, const CardText *text,
                        State state) const
{
    painter.setRenderHint(QPainter::Antialiasing);
    paintRing(painter, card, item.isSelected, state);
    const QRectF box(card.topLeft(), QSizeF(CardStyle::kWidth, CardStyle::kCoverHeight));
    QRectF cover = box;
    if (item.image)
        cover = paintCover(painter, box, *item.image);
    else
        paintPlaceholder(painter, box);
    if (isCurrentlyReading(item.paper))
        paintRibbon(painter, cover);
    if (state.isFileMissing)
        paintMissingMark(painter, cover);
    if (text)
        text->paint(painter, card.topLeft());
}

void CardPainter::paintRing(QPainter &painter, QRectF card, bool isSelected, State state) const
{
    const QColor accent = m_palette.color(QPalette::Highlight);
    const double inset = kRingWidth / 2 - kRingReach;
    const QRectF ring = card.adjusted(inset, inset, -inset, -inset);
    painter.setPen(Qt::NoPen);
    if (isSelected)
        painter.setBrush(faded(accent, 0.14));
    else if (state.isHovered)
        painter.setBrush(faded(m_palette.color(QPalette::Text), 0.06));
    else
        painter.setBrush(Qt::NoBrush);
    if (isSelected)
        painter.setPen(QPen(faded(accent, state.hasFocus ? 1 : 0.55), kRingWidth));
    else if (state.hasFocus)
        painter.setPen(QPen(accent, 1, Qt::DashLine));
    painter.drawRoundedRect(ring, kRingRadius, kRingRadius);
}

QRectF CardPainter::paintCover(QPainter &painter, QRectF box, const QPixmap &cover) const
{
    const double scale = painter.device()->devicePixelRatioF();
    const QRectF place = fitted(QSizeF(cover.size()) / scale, box, scale);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(place, cover, QRectF(cover.rect()));
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(faded(m_palette.color(QPalette::Text), 0.18), 1));
    painter.drawRoundedRect(place.adjusted(-0.5, -0.5, 0.5, 0.5), kCoverRadius, kCoverRadius);
    return place;
}

void CardPainter::paintPlaceholder(QPainter &painter, QRectF box) const
{
    const QColor secondary = m_palette.color(QPalette::PlaceholderText);
    painter.setPen(Qt::NoPen);
    painter.setBrush(faded(QColor(secondary.rgb()), 0.1));
    painter.drawRoundedRect(box, kPlaceholderRadius, kPlaceholderRadius);
    const double opacity = painter.opacity();
    painter.setOpacity(opacity * kSymbolOpacity);
    painter.drawPixmap(QRectF(box.center() - QPointF(kDocumentSize, kDocumentSize) / 2.0,
                              QSizeF(kDocumentSize, kDocumentSize)),
                       m_document, QRectF(m_document.rect()));
    painter.setOpacity(opacity);
}

void CardPainter::paintRibbon(QPainter &painter, QRectF cover) const
{
    constexpr double kWidth = 16;
    constexpr double kHeight = 26;
    constexpr double kNotch = 6;
    constexpr double kFromEdge = 12;
    const double left = cover.right() - kFromEdge - kWidth;
    const double top = cover.top() - 3;
    QPainterPath ribbon;
    ribbon.addPolygon(QPolygonF({{left, top},
                                 {left + kWidth, top},
                                 {left + kWidth, top + kHeight},
                                 {left + kWidth / 2, top + kHeight - kNotch},
                                 {left, top + kHeight}}));
    ribbon.closeSubpath();
    painter.setPen(QPen(faded(m_palette.color(QPalette::Base), 0.8), 1));
    painter.setBrush(m_palette.highlight());
    painter.drawPath(ribbon);
}

void CardPainter::paintMissingMark(QPainter &painter, QRectF cover) const
{
    constexpr double kBadge = 26;
    constexpr double kFromEdge = 6;
    const QRectF badge(cover.right() - kFromEdge - kBadge, cover.bottom() - kFromEdge - kBadge, kBadge,
                       kBadge);
    painter.setPen(QPen(faded(m_palette.color(QPalette::Text), 0.18), 1));
    painter.setBrush(m_palette.base());
    painter.drawEllipse(badge);
    painter.drawPixmap(QRectF(badge.center() - QPointF(kMissingSize, kMissingSize) / 2.0,
                              QSizeF(kMissingSize, kMissingSize)),
                       m_missing, QRectF(m_missing.rect()));
}
