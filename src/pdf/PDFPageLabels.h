#pragma once

#include <QList>
#include <QString>

/// How a document numbers its pages: "iv", "A-12". A plain value.
class PDFPageLabels
{
public:
    enum class Style { None, Decimal, UpperRoman, LowerRoman, UpperLetters, LowerLetters };

    /// Pages from `firstPage` (0-based) up to the next range are numbered alike.
    struct Range {
        qint64 firstPage = 0;
        Style style = Style::Decimal;
        qint64 firstNumber = 1; ///< of `firstPage`, at least 1
        QString prefix;

        friend bool operator==(const Range &, const Range &) = default;
    };

    /// Of a document that says nothing about it.
    PDFPageLabels() = default;
    /// `ranges` in the order of their pages.
    explicit PDFPageLabels(const QList<Range> &ranges);

    /// Whether the document has labels of its own.
    bool isEmpty() const { return m_ranges.isEmpty(); }
    /// The label of page `index` (0-based); its number counted from 1 where the document gives none.
    QString label(qint64 index) const;

    friend bool operator==(const PDFPageLabels &, const PDFPageLabels &) = default;

private:
    QList<Range> m_ranges;
};
