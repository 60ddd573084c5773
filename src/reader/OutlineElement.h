#pragma once

#include "pdf/PDFOutlineItem.h"
#include "reader/PDFView.h"

#include <QList>
#include <QString>
#include <QUuid>
#include <optional>
#include <vector>

/// An entry of a document's outline with those below it.
struct OutlineElement {
    QUuid id;      ///< new for every build
    QString label; ///< "Page" where the document has none
    std::optional<PDFPosition> destination;
    QList<OutlineElement> children; ///< empty for a leaf
};

/// The outline as it is shown, in the document's order.
QList<OutlineElement> outlineElements(const std::vector<PDFOutlineItem> &items);
