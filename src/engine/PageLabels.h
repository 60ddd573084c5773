#pragma once

#include "pdf/protocol/Messages.h"

#include <mupdf/pdf.h>

/// How a document numbers its pages, without ranges where it says nothing of it. What is damaged in the tree
/// is left out: always a `PageLabelsReply`. This MuPDF has no call for it.
Reply pageLabelsOf(fz_context *context, pdf_document *document);
