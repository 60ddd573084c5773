#pragma once

#include "engine/PlacedText.h"

#include <mupdf/fitz.h>

/// Whether a line has letters of a script that is written from right to left. Cheap: most lines have none.
bool hasRightToLeft(const fz_stext_line *line);

/// Appends the text of a line in the order in which people type it, whatever the order in which it was drawn,
/// with presentation forms spelled out. All letters of one glyph get its whole box.
void appendInLogicalOrder(PlacedText &text, const fz_stext_line *line);
