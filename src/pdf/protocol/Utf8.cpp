#include "pdf/protocol/Utf8.h"

#include <algorithm>
#include <cstddef>

namespace
{
constexpr char32_t kReplacement = 0xfffd;

bool isContinuation(unsigned char byte)
{
    return (byte & 0xc0) == 0x80;
}

/// The bytes that a character takes by its first one, 0 for a byte that starts none.
std::size_t lengthByFirst(unsigned char first)
{
    if (first < 0x80)
        return 1;
    if (first >= 0xc2 && first < 0xe0)
        return 2;
    if ((first & 0xf0) == 0xe0)
        return 3;
    return first >= 0xf0 && first <= 0xf4 ? 4 : 0;
}

/// Whether the second byte keeps the character in its shortest form, off the surrogates and inside Unicode.
bool isSecondAllowed(unsigned char first, unsigned char second)
{
    switch (first) {
    case 0xe0:
        return second >= 0xa0;
    case 0xed:
        return second < 0xa0;
    case 0xf0:
        return second >= 0x90;
    case 0xf4:
        return second < 0x90;
    default:
        return true;
    }
}

/// The length in bytes of the valid character that `text` starts with, 0 when there is none.
std::size_t characterLength(std::string_view text)
{
    const auto byte = [text](std::size_t i) {
        return static_cast<unsigned char>(text[i]);
    };
    const std::size_t length = lengthByFirst(byte(0));
    if (length == 0 || length > text.size())
        return 0;
    for (std::size_t i = 1; i < length; ++i) {
        if (!isContinuation(byte(i)))
            return 0;
    }
    return length == 1 || isSecondAllowed(byte(0), byte(1)) ? length : 0;
}
} // namespace

bool isValidUtf8(std::string_view text)
{
    while (!text.empty()) {
        const std::size_t length = characterLength(text);
        if (length == 0)
            return false;
        text.remove_prefix(length);
    }
    return true;
}

void appendUtf8(std::string &text, char32_t character)
{
    if (character > 0x10ffff || (character >= 0xd800 && character < 0xe000))
        character = kReplacement;
    const auto append = [&text](char32_t byte) {
        text.push_back(static_cast<char>(byte));
    };
    if (character < 0x80) {
        append(character);
        return;
    }
    if (character < 0x800) {
        append(0xc0 | character >> 6);
    } else if (character < 0x10000) {
        append(0xe0 | character >> 12);
        append(0x80 | (character >> 6 & 0x3f));
    } else {
        append(0xf0 | character >> 18);
        append(0x80 | (character >> 12 & 0x3f));
        append(0x80 | (character >> 6 & 0x3f));
    }
    append(0x80 | (character & 0x3f));
}

std::size_t characterCount(std::string_view text)
{
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char byte) {
        return !isContinuation(static_cast<unsigned char>(byte));
    }));
}

std::u32string decodedUtf8(std::string_view text)
{
    std::u32string characters;
    while (!text.empty()) {
        const std::size_t length = lengthByFirst(static_cast<unsigned char>(text[0]));
        // The first byte holds the bits that its mark of the length leaves.
        char32_t character =
            static_cast<unsigned char>(text[0]) & (length == 1 ? 0x7f : 0xff >> (length + 1));
        for (std::size_t i = 1; i < length; ++i)
            character = character << 6 | (static_cast<unsigned char>(text[i]) & 0x3f);
        characters.push_back(character);
        text.remove_prefix(length);
    }
    return characters;
}

std::string repairedUtf8(std::string_view text)
{
    std::string out;
    out.reserve(text.size());
    while (!text.empty()) {
        const std::size_t length = characterLength(text);
        if (length == 0)
            appendUtf8(out, kReplacement);
        else
            out.append(text.substr(0, length));
        text.remove_prefix(length == 0 ? 1 : length);
    }
    return out;
}
