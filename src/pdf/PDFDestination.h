#pragma once

#include <QPointF>
#include <QtGlobal>

/// A place in a document.
struct PDFDestination {
    qint64 pageIndex = 0; ///< 0-based
    QPointF position;     ///< in points from the upper left of the page as it is shown; inside of it

    friend bool operator==(const PDFDestination &, const PDFDestination &) = default;
};
