#pragma once

#include <mupdf/pdf.h>
#include <vector>

/// The rectangles of pixels inside `area` that the pictures of a page cover when it is drawn with the matrix
/// `place`. No pictures in this sense: stencils, images of one bit a pixel (scanned print), and what is drawn
/// in patterns and masks. Without those that lie behind a fault of the page.
std::vector<fz_irect> pictureAreasOf(fz_context *context, pdf_page *page, fz_matrix place, fz_irect area,
                                     fz_cookie *stop);
