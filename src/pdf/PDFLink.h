#pragma once

#include "pdf/PDFDestination.h"

#include <QRectF>
#include <QUrl>
#include <variant>

/// A part of a page that leads somewhere.
struct PDFLink {
    QRectF bounds; ///< in points from the upper left of the page as it is shown; inside of it
    /// In the document, or an address with the scheme http, https or mailto.
    std::variant<PDFDestination, QUrl> target;

    friend bool operator==(const PDFLink &, const PDFLink &) = default;
};
