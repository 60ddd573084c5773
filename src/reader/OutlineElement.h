#pragma once

#include "reader/PDFView.h"

#include <QList>
#include <QString>
#include <QUuid>
#include <optional>

/// An entry of a document's outline with those below it.
struct OutlineElement {
    QUuid id; ///< new for every build
    QString label;
    std::optional<PDFPosition> destination;
    QList<OutlineElement> children; ///< empty for a leaf
};
