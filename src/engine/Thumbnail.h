#pragma once

#include "pdf/protocol/Messages.h"

#include <mupdf/pdf.h>

/// The art box of a page on white, as large as the box of the request allows with its proportions kept:
/// `PictureReply`, or why there is none. `stop` as MuPDF looks at it.
Reply thumbnailOf(fz_context *context, pdf_page *page, const ThumbnailRequest &request, fz_cookie *stop);
