#pragma once

#include <QRectF>
#include <QSizeF>

/// Size and boxes of a page, in points, with the origin in the upper left of the page as it is shown: cropped
/// and turned by `rotation`.
struct PDFPageGeometry {
    QSizeF size;      ///< greater than 0 each way
    int rotation = 0; ///< the page's own, clockwise: 0, 90, 180 or 270
    QRectF mediaBox;  ///< may lie partly outside of what is shown, as may the other boxes
    QRectF bleedBox;  ///< each is what is shown where the page has none
    QRectF trimBox;
    QRectF artBox;

    friend bool operator==(const PDFPageGeometry &, const PDFPageGeometry &) = default;
};
