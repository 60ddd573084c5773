#pragma once

#include "pdf/protocol/Messages.h"

#include <mupdf/pdf.h>

class NamedLigatures;

/// The text inside a page's box: `TextReply`, or why there is none. Lines end in "\n"; ligatures are spelled
/// out; hyphens stay; right-to-left lines stand in logical order. Cut at `kMaxPageTextBytes`.
Reply textOf(fz_context *context, pdf_page *page, NamedLigatures &ligatures);
