#pragma once

#include <cstdint>
#include <mupdf/fitz.h>
#include <optional>

/// The document's file: an open descriptor, and what must be known of it before the engine is confined.
struct DocumentFile {
    int descriptor = -1;
    std::int64_t bytes = 0;
};

/// Asks for the size of an open file; nothing when that fails (see errno). Forbidden once confined: the call
/// that tells it would tell of every other file, too.
std::optional<DocumentFile> examined(int descriptor);

/// A stream over an open file that is read at positions of its own: the descriptor is shared with the program
/// that opened it, so its position must not move. Throws MuPDF's errors: call inside `guarded`. The
/// descriptor stays open when the stream is dropped.
fz_stream *newFileStream(fz_context *context, DocumentFile file);
