#pragma once

#include <cstdint>
#include <mupdf/pdf.h>

/// Rows from the top of pixels of blue, green, red and 255.
struct DrawnPixels {
    unsigned char *bytes = nullptr;
    std::uint32_t width = 0;
    std::uint32_t height = 0;
};

/// Turns light into dark in a page that was drawn with the matrix `place`: inverts every colour's lightness
/// and keeps its hue. Pictures stay as they are, and with them what is drawn over them.
///
/// Done to the pixels and not to the colours on their way to them: so blending and transparency come out as
/// drawn, and the label on a picture stays readable.
void darken(fz_context *context, pdf_page *page, fz_matrix place, const DrawnPixels &pixels, fz_cookie *stop);
