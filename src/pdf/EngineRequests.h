#pragma once

#include "pdf/PDFPagePicture.h"
#include "pdf/protocol/Requests.h"

#include <QString>

// What the rest of the program asks for, as the engine understands it.

/// Nothing for an index that no page has.
std::optional<std::uint32_t> pageNumber(qint64 index);

/// Nothing for what cannot be a password.
std::optional<OpenRequest> openRequest(const std::optional<QString> &password);

/// For sizes beyond the possible ones, the nearest of these.
ThumbnailRequest thumbnailRequest(std::uint32_t page, int maxWidth, int maxHeight);

/// Nothing for a drawing that is too large or makes no sense.
std::optional<DrawRequest> drawRequest(std::uint32_t page, const PDFDrawing &drawing);
