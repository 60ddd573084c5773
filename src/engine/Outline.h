#pragma once

#include "pdf/protocol/Messages.h"

#include <mupdf/pdf.h>

/// The outline of a document of `pageCount` pages, empty where it has none. What is damaged in it is left
/// out, and the rest stays: always an `OutlineReply`.
Reply outlineOf(fz_context *context, pdf_document *document, int pageCount);
