#pragma once

#include "pdf/PDFLink.h"
#include "pdf/PDFPageText.h"
#include "reader/PageTile.h"

#include <QImage>
#include <QList>
#include <optional>
#include <variant>
#include <vector>

/// Something to be asked of a document for the view.
struct PageJob {
    enum class Kind {
        Sizes,   ///< of `PageLayout::kBlockPages` pages from `page` on
        Picture, ///< `tile`
        Text,    ///< of `page`, as are links
        Links,
    };
    Kind kind = Kind::Sizes;
    qint64 page = 0; ///< 0-based; the tile's for a picture
    PageTile tile = {};

    friend bool operator==(const PageJob &, const PageJob &) = default;
};

using PageSizes = std::vector<std::optional<QSizeF>>; ///< in points; nothing for a page that cannot be had

/// What answers a job, by its kind.
using PageAnswer = std::variant<PageSizes, QImage, PDFPageText, QList<PDFLink>>;

/// A job and whether somebody looks at what it is for.
struct PlannedJob {
    PageJob job;
    bool isVisible = false;

    friend bool operator==(const PlannedJob &, const PlannedJob &) = default;
};
