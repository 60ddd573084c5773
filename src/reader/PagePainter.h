#pragma once

#include "reader/PageStock.h"

#include <QColor>
#include <QList>
#include <QPalette>
#include <QRectF>

class QPainter;

/// The colours around and over pages.
struct PageColors {
    QColor backdrop;
    QColor paper; ///< of a page without its picture yet
    QColor ink;   ///< for words in place of a page
    QColor edge;
    QColor selection; ///< multiplied with a light page, screened over a dark one; so is `lit`
    QColor lit;
    bool isDark = false;

    /// Those that hold over light pages, or over dark ones.
    static PageColors from(const QPalette &palette, bool isDark);
    /// `color` at a part of its strength, 0 to 1: what changes nothing at 0.
    QColor faded(const QColor &color, double strength) const;
};

/// Paints what the viewport shows, one page after another: paper, the sharp picture or what stands in for it.
class PagePainter
{
public:
    /// `painter` is in pixels of the viewport, of which each has `pixelRatio` of the screen.
    PagePainter(QPainter &painter, const Viewpoint &viewpoint, PageStock &stock, double pixelRatio);

    void paintBackdrop(const PageColors &colors);
    void paintPage(qint64 page, const PageColors &colors);
    /// Lays `color` over rectangles of a page (unturned), as a marker would: what is written stays readable.
    void paintMarks(qint64 page, const QList<QRectF> &rectangles, const QColor &color, bool isDark);

private:
    /// Pixels of the screen, to which every page is aligned so that its picture is not resampled.
    QRect screenRect(qint64 page) const;
    /// The whole viewport.
    QRect screen() const;
    void fill(const QRegion &region, const QColor &color);
    void paintEdge(const QRect &page, const PageColors &colors);
    void paintPicture(const PageTile &tile, const QImage &picture, const QRect &page);
    void paintFailure(const QRect &page, const PageColors &colors);

    QPainter &m_painter;
    const Viewpoint &m_view;
    PageStock &m_stock;
    double m_pixelRatio;
};
