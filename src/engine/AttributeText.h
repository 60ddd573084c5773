#pragma once

#include <string>
#include <string_view>

/// The text of a PDF text string (PDFDocEncoding, UTF-16 or UTF-8 by its byte order mark) as clean UTF-8:
/// what does not decode becomes U+FFFD, line breaks and tabs become blanks, other control characters go, and
/// the rest is trimmed and cut to `kMaxAttributeCharacters`.
std::string attributeText(std::string_view bytes);
