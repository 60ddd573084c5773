#pragma once

#include <QFont>
#include <QRect>
#include <QString>
#include <Qt>

class QPainter;

/// A text that takes as many lines as it needs, up to a limit. It breaks inside a word only where the word is
/// wider than the line, so it fits into any width; what is over the limit becomes an ellipsis.
struct WrappedText {
    QString text;
    QFont font;
    int maximumLines = 0;                     ///< 0: no limit
    Qt::TextElideMode elide = Qt::ElideRight; ///< right, or in the middle, as suits paths
    Qt::LayoutDirection direction = Qt::LeftToRight;

    int heightForWidth(int width) const;
    /// Whether the whole text shows in that width.
    bool fits(int width) const;
    void draw(QPainter &painter, const QRect &bounds) const;
};
