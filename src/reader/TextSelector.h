#pragma once

#include "pdf/PDFSelection.h"
#include "reader/PageContents.h"

#include <optional>

/// What of a document's text is selected: by hand, from one point to another, or given. Points are of a page,
/// unturned. Works on texts as they arrive: only where a selection starts and ends is kept, so selecting a
/// whole document costs nothing.
class TextSelector
{
public:
    /// `contents` has the texts, and outlives the selector.
    explicit TextSelector(const PageContents &contents);

    struct Place {
        qint64 page = 0;
        QPointF point;
    };

    void clear();
    /// Starts anew at `place`, which selects its word or line at once.
    void start(const Place &place, PDFTextUnit unit);
    /// Moves the loose end.
    void extend(const Place &place);
    void selectAll(qint64 pageCount);
    void set(const PDFSelection &selection);

    /// Whether the selection was set, not made by hand.
    bool isGiven() const { return m_given.has_value(); }
    /// The pages from the one where it starts to the one where it ends.
    PageRange pages() const;
    /// What is selected on `page`, whose text is `text`.
    PDFTextRange rangeOn(qint64 page, const PDFPageText &text) const;
    /// What to light on a page; nothing while its text is not there.
    QList<QRectF> rectanglesOn(qint64 page) const;
    /// What is selected on those pages whose texts are there; absent when that is nothing.
    std::optional<PDFSelection> selection() const;

private:
    /// A place where a selection by hand ends; without a point it is the very start or end of the page.
    struct End {
        qint64 page = 0;
        std::optional<QPointF> point;
    };
    struct Span {
        End anchor;
        End loose;
        PDFTextUnit unit = PDFTextUnit::Character;
    };

    static PDFTextRange rangeIn(const Span &span, qint64 page, const PDFPageText &text);

    const PageContents &m_contents;
    std::optional<Span> m_span;
    std::optional<PDFSelection> m_given;
};
