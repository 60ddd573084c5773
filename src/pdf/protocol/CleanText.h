#pragma once

#include <string_view>

// What clean text is made of. The engine makes the title and the author so, and the program believes it of no
// engine.

/// Whether a character is a control character of ASCII or Latin-1.
bool isControl(char32_t character);

/// Whether a character ends a line or is a tab.
bool isBreakOrTab(char32_t character);

/// Whether a character is a space of any width.
bool isBlank(char32_t character);

/// Whether UTF-8 is one trimmed line of at most `kMaxAttributeCharacters` without control characters.
bool isCleanAttribute(std::string_view text);
