#pragma once

#include "pdf/protocol/Replies.h"

#include <mupdf/pdf.h>
#include <optional>

/// A page's size as it is shown, from its crop box, user unit and rotation, and the way to its coordinates
/// from those of its content. Throws MuPDF's errors (call inside `guarded`), also for a page without a size
/// that makes sense.
struct PageCoordinates {
    fz_rect bounds; ///< begins at the upper left, 0 and 0
    fz_matrix fromContent;
};

PageCoordinates coordinatesOf(fz_context *context, pdf_obj *page);

/// `box` without what lies beyond `bounds`, whatever its edges are.
PageBox clipped(fz_rect box, fz_rect bounds);
/// `box` with edges that a message can carry.
PageBox limited(fz_rect box);
