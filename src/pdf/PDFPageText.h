#pragma once

#include <QList>
#include <QPointF>
#include <QRectF>
#include <QString>
#include <optional>

/// A part of a page's text: UTF-16 units from `start` up to, but without, `end`.
struct PDFTextRange {
    qsizetype start = 0;
    qsizetype end = 0;

    bool isEmpty() const { return start >= end; }
    friend bool operator==(const PDFTextRange &, const PDFTextRange &) = default;
};

/// By what a person selects: dragging, after a double click, after a triple click.
enum class PDFTextUnit { Character, Word, Line };

/// The text of a page and where it stands: the words as printed, in logical order, lines ending in "\n",
/// ligatures and presentation forms spelled out, hyphens kept. A plain value; copies share what they hold.
///
/// Boxes are in points from the upper left of the page as it is shown, and end at its edges. There is one for
/// every UTF-16 unit, so that an index in the text is an index of its box: both units of a surrogate pair
/// have that of their character, line ends have a null one. The letters of a ligature share its width; those
/// of a right-to-left one have all of it.
class PDFPageText
{
public:
    PDFPageText() = default;
    /// `boxes` are as many as `text` has UTF-16 units.
    PDFPageText(const QString &text, const QList<QRectF> &boxes);

    const QString &string() const { return m_text; }
    bool isEmpty() const { return m_text.isEmpty(); }

    /// The part of `range` that is in the text.
    PDFTextRange clamped(PDFTextRange range) const;
    QString string(PDFTextRange range) const;
    /// The smallest rectangle around a range; null when nothing of it stands anywhere.
    QRectF bounds(PDFTextRange range) const;
    /// What to light of a range: a rectangle for each line, more where it is scattered within a line.
    QList<QRectF> lineRectangles(PDFTextRange range) const;

    /// The character whose box holds a point of the page.
    std::optional<qsizetype> characterAt(QPointF point) const;
    /// The character nearest to a point, but one in the line beside the point before any other of that
    /// column; nothing on a page without text.
    std::optional<qsizetype> nearestCharacter(QPointF point) const;
    /// The place between two characters nearest to a point: the index of the one behind it.
    qsizetype caretAt(QPointF point) const;

    /// The word, or whatever stands between words, of which `index` is part. Ends with its line.
    PDFTextRange wordAt(qsizetype index) const;
    /// The line of which `index` is part, without its end.
    PDFTextRange lineAt(qsizetype index) const;
    /// What a person selects from one point to another, in either direction.
    PDFTextRange rangeBetween(QPointF from, QPointF to, PDFTextUnit unit) const;

    friend bool operator==(const PDFPageText &, const PDFPageText &) = default;

private:
    std::optional<qsizetype> nearestIn(PDFTextRange range, QPointF point) const;
    /// The line of the same column as `line` that stands as high as a point; `line` itself when none does.
    PDFTextRange lineBeside(PDFTextRange line, QPointF point) const;
    PDFTextRange unitAt(qsizetype index, PDFTextUnit unit) const;
    /// The end of the character that starts at `index`: two units further for a surrogate pair.
    qsizetype characterEnd(qsizetype index) const;
    qsizetype characterStart(qsizetype index) const;
    /// Which way the text runs at `index`, on the page.
    QPointF directionAt(qsizetype index) const;

    QString m_text;
    QList<QRectF> m_boxes;
};
