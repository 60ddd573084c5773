#pragma once

#include "pdf/PDFLink.h"
#include "pdf/PDFOutlineItem.h"
#include "pdf/PDFPageGeometry.h"
#include "pdf/PDFPageLabels.h"
#include "pdf/PDFPageText.h"
#include "pdf/protocol/Replies.h"

#include <optional>

// What the engine answered, as the rest of the program knows it. The messages were checked when they were
// decoded; here only what depends on the document is.

QList<std::optional<PDFPageGeometry>> geometriesFrom(const ShapesReply &reply);
PDFPageText pageTextFrom(const PlacedTextReply &reply);
PDFPageLabels pageLabelsFrom(const PageLabelsReply &reply);

/// Nothing when an item leads to a page that the document does not have.
std::optional<std::vector<PDFOutlineItem>> outlineFrom(const OutlineReply &reply, qint64 pageCount);
std::optional<QList<PDFLink>> linksFrom(const LinksReply &reply, qint64 pageCount);
