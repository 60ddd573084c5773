#pragma once

#include "ui/CardText.h"

#include <QPixmap>

struct PaperGridItem;

/// Draws cards. Made anew when palette, fonts or the screen's scale change.
class CardPainter
{
public:
    /// How far a selection ring reaches beyond the card.
    static constexpr int kRingReach = 9;

    /// What the pointer and the keyboard are doing with a card.
    struct State {
        bool isHovered = false;
        bool hasFocus = false; ///< the keyboard's
        bool isFileMissing = false;
    };

    CardPainter(const CardStyle &style, const QPalette &palette, double scale);

    const CardStyle &style() const { return m_style; }
    const QPalette &palette() const { return m_palette; }
    /// The box that covers are read for, in device pixels.
    QSize coverBox() const { return m_coverBox; }

    /// Without a text the card has none: it is not laid out yet.
    void paint(QPainter &painter, QRectF card, const PaperGridItem &item, const CardText *text,
               State state) const;

private:
    void paintRing(QPainter &painter, QRectF card, bool isSelected, State state) const;
    QRectF paintCover(QPainter &painter, QRectF box, const QPixmap &cover) const;
    void paintPlaceholder(QPainter &painter, QRectF box) const;
    void paintRibbon(QPainter &painter, QRectF cover) const;
    void paintMissingMark(QPainter &painter, QRectF cover) const;

    CardStyle m_style;
    QPalette m_palette;
    QSize m_coverBox;
    QPixmap m_document; ///< the placeholder's symbol
    QPixmap m_missing;
};
