#include "engine/AttributeText.h"

#include "pdf/protocol/CleanText.h"
#include "pdf/protocol/Limits.h"
#include "pdf/protocol/Utf8.h"

#include <mupdf/fitz.h>

namespace
{
using namespace std::string_view_literals;

constexpr char32_t kReplacement = 0xfffd;
constexpr char32_t kEscape = 0x1b;

std::u32string fromPdfDocEncoding(std::string_view bytes)
{
    std::u32string out;
    for (unsigned char byte : bytes) {
        const char32_t character = fz_unicode_from_pdf_doc_encoding[byte];
        out.push_back(character == 0 && byte != 0 ? kReplacement : character);
    }
    return out;
}

std::u32string fromUtf16(std::string_view bytes, bool bigEndian)
{
    const auto unit = [&](std::size_t i) -> char32_t {
        const auto high = static_cast<unsigned char>(bytes[bigEndian ? i : i + 1]);
        const auto low = static_cast<unsigned char>(bytes[bigEndian ? i + 1 : i]);
        return static_cast<char32_t>(high << 8 | low);
    };
    const auto isHigh = [](char32_t c) {
        return c >= 0xd800 && c < 0xdc00;
    };
    const auto isLow = [](char32_t c) {
        return c >= 0xdc00 && c < 0xe000;
    };
    std::u32string out;
    std::size_t i = 0;
    for (; i + 1 < bytes.size(); i += 2) {
        const char32_t first = unit(i);
        if (isHigh(first) && i + 3 < bytes.size() && isLow(unit(i + 2))) {
            out.push_back(0x10000 + ((first - 0xd800) << 10) + (unit(i + 2) - 0xdc00));
            i += 2;
        } else {
            out.push_back(isHigh(first) || isLow(first) ? kReplacement : first);
        }
    }
    if (i < bytes.size())
        out.push_back(kReplacement);
    return out;
}

std::u32string fromUtf8(std::string_view bytes)
{
    return decodedUtf8(repairedUtf8(bytes));
}

std::u32string decoded(std::string_view bytes)
{
    if (bytes.starts_with("\xfe\xff"sv))
        return fromUtf16(bytes.substr(2), true);
    if (bytes.starts_with("\xff\xfe"sv))
        return fromUtf16(bytes.substr(2), false);
    if (bytes.starts_with("\xef\xbb\xbf"sv))
        return fromUtf8(bytes.substr(3));
    return fromPdfDocEncoding(bytes);
}

/// Takes out the language codes that may stand between two escape characters.
void removeLanguageCodes(std::u32string &text)
{
    constexpr std::size_t kLongestCode = 4; // two letters of language, two of country
    for (std::size_t first = 0; (first = text.find(kEscape, first)) != std::u32string::npos;) {
        const std::size_t last = text.find(kEscape, first + 1);
        const bool isCode = last != std::u32string::npos && last - first - 1 <= kLongestCode;
        text.erase(first, isCode ? last - first + 1 : 1);
    }
}

std::u32string cleaned(const std::u32string &text)
{
    std::u32string out;
    for (char32_t c : text) {
        if (isBreakOrTab(c))
            out.push_back(' ');
        else if (!isControl(c))
            out.push_back(c);
    }
    return out;
}

std::u32string trimmed(const std::u32string &text)
{
    std::size_t first = 0;
    std::size_t last = text.size();
    while (first < last && isBlank(text[first]))
        ++first;
    while (last > first && isBlank(text[last - 1]))
        --last;
    return text.substr(first, last - first);
}
std::u32string cleanLine(std::string_view bytes)
{
    std::u32string text = decoded(bytes);
    removeLanguageCodes(text);
    return cleaned(text);
}

std::string utf8(std::u32string_view text)
{
    std::string out;
    for (char32_t c : text)
        appendUtf8(out, c);
    return out;
}

std::u32string withoutDirectionMarks(std::u32string text)
{
    std::erase_if(text, isDirectionMark);
    return text;
}
} // namespace

std::string attributeText(std::string_view bytes)
{
    return utf8(trimmed(trimmed(cleanLine(bytes)).substr(0, kMaxAttributeCharacters)));
}

std::string labelText(std::string_view bytes)
{
    return utf8(trimmed(trimmed(withoutDirectionMarks(cleanLine(bytes))).substr(0, kMaxLabelCharacters)));
}

std::string labelPrefix(std::string_view bytes)
{
    return utf8(withoutDirectionMarks(cleanLine(bytes)).substr(0, kMaxLabelCharacters));
}
