#pragma once

#include <string_view>

// What clean text is made of. The engine makes titles, authors and labels so, and the program believes it of
// no engine.

/// Whether a character is a control character of ASCII or Latin-1.
bool isControl(char32_t character);

/// Whether a character ends a line or is a tab.
bool isBreakOrTab(char32_t character);

/// Whether a character is a space of any width.
bool isBlank(char32_t character);

/// Whether a character only turns the direction of text beside it. In a list of labels one could turn its
/// neighbours.
bool isDirectionMark(char32_t character);

/// Whether UTF-8 is one trimmed line of at most `kMaxAttributeCharacters` without control characters.
bool isCleanAttribute(std::string_view text);

/// Whether UTF-8 is one line of at most `kMaxLabelCharacters` without control characters and direction marks.
bool isCleanLabel(std::string_view text);
