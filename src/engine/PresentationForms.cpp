#include "engine/PresentationForms.h"

#include "pdf/protocol/Utf8.h"

#include <array>
#include <string_view>
#include <unicode/unorm2.h>

namespace
{
// The longest spelling, of U+FDFA, has 18 letters.
constexpr int32_t kLongestSpelling = 32;

bool isPresentationForm(char32_t c)
{
    return (c >= 0xfb00 && c <= 0xfb06) || (c >= 0xfb1d && c <= 0xfdff) || (c >= 0xfe70 && c <= 0xfeff);
}
} // namespace

void appendSpelledOut(std::string &text, char32_t character)
{
    if (!isPresentationForm(character)) {
        appendUtf8(text, character);
        return;
    }
    UErrorCode status = U_ZERO_ERROR;
    const UNormalizer2 *folding = unorm2_getNFKCInstance(&status);
    const auto source = static_cast<char16_t>(character);
    std::array<char16_t, kLongestSpelling> folded;
    const int32_t length = unorm2_normalize(folding, &source, 1, folded.data(), kLongestSpelling, &status);
    if (U_FAILURE(status)) {
        appendUtf8(text, character);
        return;
    }
    // The spellings of all these blocks lie in the basic plane.
    for (char16_t unit : std::u16string_view(folded.data(), static_cast<std::size_t>(length)))
        appendUtf8(text, unit);
}
