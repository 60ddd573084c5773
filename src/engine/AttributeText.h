#pragma once

#include <string>
#include <string_view>

/// The text of a PDF text string (PDFDocEncoding, UTF-16 or UTF-8 by its byte order mark) as clean UTF-8:
/// what does not decode becomes U+FFFD, line breaks and tabs become blanks, other control characters go, and
/// the rest is trimmed and cut to `kMaxAttributeCharacters`.
std::string attributeText(std::string_view bytes);

/// The same without direction marks and cut to `kMaxLabelCharacters`: what an outline's item shows.
std::string labelText(std::string_view bytes);
/// The same without being trimmed: what stands before the numbers of pages.
std::string labelPrefix(std::string_view bytes);
