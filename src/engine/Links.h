#pragma once

#include "pdf/protocol/Messages.h"

#include <mupdf/pdf.h>

/// The links of a page that lead into the document or to the web, from the lowest to the topmost:
/// `LinksReply`, or why there is none. Links that start or open anything else are left out.
Reply linksOf(fz_context *context, pdf_document *document, int pageCount, std::uint32_t pageIndex);
