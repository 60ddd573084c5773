#pragma once

#include "pdf/protocol/Replies.h"

#include <mupdf/pdf.h>
#include <optional>

/// Finds the places that outline items and links lead to. Use from one thread.
class Destinations
{
public:
    /// For the pages of a document below `pageCount`.
    Destinations(fz_context *context, pdf_document *document, int pageCount);

    /// Where an item or a link leads inside the document, by its destination or its action; nothing when it
    /// leads nowhere, which includes whatever is damaged on the way.
    std::optional<PageTarget> targetOf(pdf_obj *item) const;

private:
    pdf_obj *explicitDestination(pdf_obj *item) const;
    int pageIndex(pdf_obj *destination) const;

    fz_context *m_context;
    pdf_document *m_document;
    int m_pageCount;
};
