#pragma once

#include <QTextLayout>
#include <memory>

/// A text parts of which look different.
struct FormattedText {
    QString text;
    QList<QTextLayout::FormatRange> formats;
};

/// A text broken into lines.
struct TextLines {
    std::unique_ptr<QTextLayout> layout; ///< its first line stands at 0, 0
    bool isCut = false;                  ///< the text did not fit and ends with "…"
};

/// Breaks `text` into at most `lines` lines of `width`; where it needs more, the last one ends with "…",
/// after a whole word if it can. Only the beginning of an endless text is looked at.
/// Lines stand as far apart as those of `font`, also where another font has to supply the letters.
TextLines fitText(const FormattedText &text, const QFont &font, int width, int lines);
