#pragma once

#include "reader/PDFView.h"
#include "reader/PageLayout.h"

#include <QTransform>

/// Which part of a flow of pages a viewport shows: scale, fit and place, and all mapping between points of a
/// page and pixels of the viewport (device-independent, origin upper left). No widget.
class Viewpoint
{
public:
    /// Of a scale chosen by hand, in pixels a point. A fit may go beyond.
    static constexpr double kLeastScale = 0.1;
    static constexpr double kGreatestScale = 16;

    /// What the scale follows when the viewport's size changes.
    enum class Fit { None, Width, Page };

    const PageLayout &layout() const { return m_layout; }
    double scale() const { return m_scale; }
    Fit fit() const { return m_fit; }
    QSizeF viewport() const { return m_viewport; }

    /// Starts at the top of a document of so many pages; the fit stays.
    void reset(qint64 pageCount);
    /// The line at the upper edge stays there.
    void setViewport(QSizeF size);
    /// As `PageLayout::learn`; what is visible stays where it is.
    void learn(qint64 first, const std::vector<std::optional<QSizeF>> &sizes);
    /// Keeps the middle of the viewport in place.
    void setTurns(int turns);

    void setFit(Fit fit);
    /// The point of the page at `fixed` stays there, as far as the edges of the flow allow.
    void setScale(double scale, QPointF fixed);

    /// Of the viewport's upper left corner in the flow.
    QPointF offset() const { return m_offset; }
    /// The places that `offset` can take. Sideways as far as the visible pages reach.
    QRectF offsets() const { return offsetsAt(m_offset.y()); }
    /// The place nearest to `offset`.
    QPointF clamped(QPointF offset) const;
    void moveTo(QPointF offset) { m_offset = clamped(offset); }
    /// Whether a scroll bar is of use for moving sideways. Does not follow from what is visible: a bar that
    /// came and went with the pages would change by itself what is visible, and so on for ever.
    bool isWiderThanViewport() const;

    /// Which point of which page lies at `where`; beside the pages it is one of the page that is nearest.
    PDFPosition positionAt(QPointF where) const;
    /// Moves so that `position` comes to lie at `where`, or as near as the edges of the flow allow.
    void place(const PDFPosition &position, QPointF where);
    /// As `place`, for a jump: fits the page of `position` first.
    void jump(const PDFPosition &position, QPointF where);
    /// Fits a page and shows its top.
    void jumpToPage(qint64 page);

    PageRange visiblePages() const;
    /// Those that come to be visible when one scrolls a viewport's height up or down.
    PageRange pagesAround() const;
    /// The page with the largest visible part, the upper one of two; absent without pages.
    std::optional<qint64> currentPage() const;

    /// In the viewport.
    QRectF pageRect(qint64 page) const;
    /// From points of the page (unturned) to the viewport.
    QTransform pageTransform(qint64 page) const;

private:
    /// A point of a page and where it is to stay.
    struct Anchor {
        PDFPosition position;
        double y = 0;
    };

    /// The highest line of a page that is visible. Never one of a gap, which does not grow with the scale.
    Anchor topOf(qint64 page) const;
    void restore(const Anchor &anchor);
    qint64 nearestPage(qint64 page) const;
    QRectF offsetsAt(double y) const;
    void refit();

    PageLayout m_layout;
    QSizeF m_viewport;
    double m_scale = 1;
    Fit m_fit = Fit::Width;
    qint64 m_fittedPage = 0;
    QPointF m_offset;
};
