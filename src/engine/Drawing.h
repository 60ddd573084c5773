#pragma once

#include "pdf/protocol/Messages.h"

#include <mupdf/pdf.h>

/// Draws a part of a page on white into `pixels`, which hold what the request asks for: `DrawnReply`, or why
/// that failed, and then they hold anything. `stop` as MuPDF looks at it.
Reply draw(fz_context *context, pdf_page *page, const DrawRequest &request, unsigned char *pixels,
           fz_cookie *stop);
