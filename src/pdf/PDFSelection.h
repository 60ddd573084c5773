#pragma once

#include "pdf/PDFPageText.h"

#include <QMap>

/// Selected text of a document, on one page or several. A plain value.
class PDFSelection
{
public:
    /// Of nothing.
    PDFSelection() = default;
    /// A range of the text of page `pageIndex` (0-based); what lies beyond the text is left out.
    PDFSelection(qint64 pageIndex, const PDFPageText &text, PDFTextRange range);

    bool isEmpty() const { return m_pages.isEmpty(); }
    /// The selected text in the order of the pages. Between parts that do not touch stands a blank, or a line
    /// end where there is one between them.
    QString string() const;
    /// The pages on which something is selected, in their order.
    QList<qint64> pages() const { return m_pages.keys(); }
    /// The ranges selected on a page, in their order, none touching another.
    QList<PDFTextRange> ranges(qint64 pageIndex) const { return m_pages.value(pageIndex).ranges; }
    /// The smallest rectangle around what is selected on a page; null when nothing is.
    QRectF bounds(qint64 pageIndex) const;
    /// What to light on a page: see `PDFPageText::lineRectangles`.
    QList<QRectF> lineRectangles(qint64 pageIndex) const;

    /// Selects what `other` selects as well.
    void add(const PDFSelection &other);

    friend bool operator==(const PDFSelection &, const PDFSelection &) = default;

private:
    struct PagePart {
        PDFPageText text;
        QList<PDFTextRange> ranges;

        void add(PDFTextRange range);
        QString string() const;
        friend bool operator==(const PagePart &, const PagePart &) = default;
    };

    QMap<qint64, PagePart> m_pages; ///< each with a range at least
};
