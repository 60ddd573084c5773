#pragma once

#include <mupdf/fitz.h>

/// A stream over an open file that is read at positions of its own: the descriptor is shared with the program
/// that opened it, so its position must not move. Throws MuPDF's errors: call inside `guarded`. The
/// descriptor stays open when the stream is dropped.
fz_stream *newFileStream(fz_context *context, int descriptor);
