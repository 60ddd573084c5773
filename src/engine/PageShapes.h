#pragma once

#include "pdf/protocol/Messages.h"

#include <mupdf/pdf.h>

/// Sizes, rotations and boxes of the pages asked for: `ShapesReply` with an entry for each of them that lies
/// below `pageCount`. Loads no page's content.
Reply shapesOf(fz_context *context, pdf_document *document, int pageCount, const ShapesRequest &request);
