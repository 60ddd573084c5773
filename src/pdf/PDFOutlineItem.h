#pragma once

#include "pdf/PDFDestination.h"

#include <QString>
#include <optional>
#include <vector>

/// An item of a document's outline.
struct PDFOutlineItem {
    /// One line without direction marks, of limited length. Absent when there is nothing to be seen.
    std::optional<QString> label;
    /// Absent when it leads nowhere in the document.
    std::optional<PDFDestination> destination;
    std::vector<PDFOutlineItem> children;

    friend bool operator==(const PDFOutlineItem &, const PDFOutlineItem &) = default;
};
