#pragma once

#include <string>
#include <string_view>

/// Whether `text` is UTF-8 as Unicode defines it: no overlong forms, no surrogates, nothing past U+10FFFF.
bool isValidUtf8(std::string_view text);

/// Appends one character; what is no Unicode character becomes U+FFFD.
void appendUtf8(std::string &text, char32_t character);

/// The number of characters of valid UTF-8.
std::size_t characterCount(std::string_view text);

/// The characters of valid UTF-8.
std::u32string decodedUtf8(std::string_view text);

/// `text` with everything that is not UTF-8 replaced by U+FFFD.
std::string repairedUtf8(std::string_view text);
