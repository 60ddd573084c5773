#pragma once

#include <QRect>
#include <optional>

/// Where the cards of a grid stand, worked out from their number alone. Everything is in device-independent
/// pixels of the content, whose origin is the top left corner of the first line's margin. A line is one row
/// of cards.
struct GridGeometry {
    static constexpr int kCardWidth = 168;
    static constexpr int kGap = 24;     ///< between cards, both ways
    static constexpr int kPadding = 20; ///< around all cards

    int width = 0; ///< of the viewport
    int count = 0; ///< of cards
    int cardHeight = 0;

    /// Cards first to last, both included; `last` before `first` when there are none.
    struct Range {
        int first = 0;
        int last = -1;

        friend bool operator==(const Range &, const Range &) = default;
    };

    int columns() const; ///< at least 1, however narrow the viewport
    int lines() const;
    int lineHeight() const { return cardHeight + kGap; }
    int height() const; ///< of the content; 0 without cards

    QRect cardRect(int card) const;
    /// The card under a point; none in gaps and margins.
    std::optional<int> cardAt(QPoint point) const;
    /// The cards of all lines that reach into `top` to `bottom`.
    Range cardsBetween(int top, int bottom) const;

    friend bool operator==(const GridGeometry &, const GridGeometry &) = default;

private:
    int left() const; ///< of the first column
};
