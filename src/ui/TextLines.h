#pragma once

#include <QTextLayout>
#include <memory>

/// A text broken into lines.
struct TextLines {
    std::unique_ptr<QTextLayout> layout; ///< its first line stands at 0, 0
    bool isCut = false;                  ///< the text did not fit and ends with "…"
};

/// Breaks `text` into at most `lines` lines of `width`; where it needs more, the last one ends with "…",
/// after a whole word if it can. Only the beginning of an endless text is looked at.
TextLines fitText(const QString &text, const QList<QTextLayout::FormatRange> &formats, const QFont &font,
                  int width, int lines);
