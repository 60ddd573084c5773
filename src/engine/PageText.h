#pragma once

#include "pdf/protocol/Messages.h"

#include <mupdf/pdf.h>

class NamedLigatures;

/// Reads the text inside a page's box. Lines end in "\n"; ligatures are spelled out; hyphens stay;
/// right-to-left lines stand in logical order. Cut at `kMaxPageTextBytes`. `stop` as MuPDF looks at it.
///
/// `TextReply`, or why there is none.
Reply textOf(fz_context *context, pdf_page *page, NamedLigatures &ligatures, fz_cookie *stop);
/// The same text with the box of every character: `PlacedTextReply`, or why there is none. The letters of a
/// ligature share its width.
Reply placedTextOf(fz_context *context, pdf_page *page, NamedLigatures &ligatures, fz_cookie *stop);
