#include "pdf/protocol/CleanText.h"

#include "pdf/protocol/Limits.h"
#include "pdf/protocol/Utf8.h"

#include <algorithm>
#include <string>

namespace
{
bool isUnclean(char32_t character)
{
    return isControl(character) || isBreakOrTab(character);
}
} // namespace

bool isControl(char32_t character)
{
    return character < 0x20 || (character >= 0x7f && character < 0xa0);
}

bool isBreakOrTab(char32_t character)
{
    return (character >= 0x09 && character <= 0x0d) || character == 0x85 || character == 0x2028 ||
           character == 0x2029;
}

bool isBlank(char32_t character)
{
    return character == 0x20 || character == 0xa0 || character == 0x3000 ||
           (character >= 0x2000 && character <= 0x200a);
}

bool isDirectionMark(char32_t character)
{
    return character == 0x061c || character == 0x200e || character == 0x200f ||
           (character >= 0x202a && character <= 0x202e) || (character >= 0x2066 && character <= 0x2069);
}

bool isCleanAttribute(std::string_view text)
{
    if (!isValidUtf8(text))
        return false;
    const std::u32string characters = decodedUtf8(text);
    if (characters.empty())
        return true;
    return characters.size() <= kMaxAttributeCharacters && !isBlank(characters.front()) &&
           !isBlank(characters.back()) && std::none_of(characters.begin(), characters.end(), isUnclean);
}

bool isCleanLabel(std::string_view text)
{
    if (!isValidUtf8(text))
        return false;
    const std::u32string characters = decodedUtf8(text);
    return characters.size() <= kMaxLabelCharacters &&
           std::none_of(characters.begin(), characters.end(),
                        [](char32_t c) { return isUnclean(c) || isDirectionMark(c); });
}
