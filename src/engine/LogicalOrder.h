#pragma once

#include <mupdf/fitz.h>
#include <string>

/// Whether a line has letters of a script that is written from right to left. Cheap: most lines have none.
bool hasRightToLeft(const fz_stext_line *line);

/// The text of a line in the order in which people type it, whatever the order in which it was drawn, with
/// presentation forms spelled out.
std::string inLogicalOrder(const fz_stext_line *line);
