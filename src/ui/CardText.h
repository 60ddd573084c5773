#pragma once

#include "ui/GridGeometry.h"
#include "ui/PaperListModel.h"
#include "ui/TextLines.h"

#include <QFont>
#include <QPalette>
#include <QPoint>
#include <vector>

class QPainter;

/// Whether a grid's cards carry passages; all of a grid have one height.
enum class CardKind { Paper, SearchResult };

/// Fonts and measures of a grid's cards, in device-independent pixels.
struct CardStyle {
    static constexpr int kWidth = GridGeometry::kCardWidth;
    static constexpr int kCoverHeight = 224; ///< 3:4
    static constexpr int kTitleLines = 2;
    static constexpr int kPassageLines = 4;
    static constexpr int kCoverGap = 8; ///< between cover and title
    static constexpr int kTextGap = 3;  ///< between title, authors and passage

    CardStyle(const QFont &base, CardKind kind);

    QFont titleFont;
    QFont smallFont; ///< of authors, year and passage
    CardKind kind;
    int titleLine; ///< height of a line
    int smallLine;

    int height() const; ///< of a card
};

/// The texts of one card, laid out once and painted many times. With another style or palette make another.
class CardText
{
public:
    /// `query` is what the person searched for: its words are told apart in the passage.
    CardText(const PaperCard &card, const QString &query, const CardStyle &style, const QPalette &palette);

    /// Paints below the cover of a card whose top left corner is `topLeft`.
    void paint(QPainter &painter, QPointF topLeft) const;
    /// Whether something of the title did not fit.
    bool isTitleCut() const { return m_isTitleCut; }

private:
    struct Block {
        std::unique_ptr<QTextLayout> layout;
        int top = 0;
        QColor colour;
    };

    /// Adds a block below the others, unless the text is empty; true when not all of it fits.
    bool add(const FormattedText &text, const QFont &font, int lines, const QColor &colour);

    std::vector<Block> m_blocks;
    int m_bottom; ///< where the next block begins, from the card's top
    bool m_isTitleCut = false;
};

/// "authors · year", with as much of the authors as fits into `width` beside the year.
QString elidedByline(const Paper &paper, const QFont &font, int width);

/// `colour`'s form for text that matters less.
QColor secondaryColour(const QPalette &palette);
