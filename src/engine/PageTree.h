#pragma once

#include "engine/Guarded.h"

#include <mupdf/pdf.h>

/// The number of pages that a document claims. Where it claims none although its page tree has children, they
/// are counted, and the tree in memory becomes a flat one of just these pages, so that they load: MuPDF finds
/// its way by what the nodes claim. What cannot be read of the tree is left out.
///
/// 0 only for a document whose tree is there and empty. Fails when no page can be found, or as MuPDF does.
std::optional<CallFailure> countPages(fz_context *context, pdf_document *document, int &count);
