#include "engine/PresentationForms.h"

#include "pdf/protocol/Utf8.h"

#include <array>
#include <mupdf/ucdn.h>

namespace
{
// What `ucdn_compat_decompose` asks for: the longest spelling, of U+FDFA.
constexpr std::size_t kLongestSpelling = 18;

bool isPresentationForm(char32_t c)
{
    return (c >= 0xfb00 && c <= 0xfb06) || (c >= 0xfb1d && c <= 0xfdff) || (c >= 0xfe70 && c <= 0xfeff);
}
bool isComposed(char32_t c)
{
    std::uint32_t first = 0;
    std::uint32_t second = 0;
    return ucdn_decompose(c, &first, &second) != 0;
}

void appendTakenApart(std::string &text, char32_t character)
{
    std::array<std::uint32_t, kLongestSpelling> letters;
    const int count = ucdn_compat_decompose(character, letters.data());
    // An ordinary letter with its marks in one character stays whole.
    if (count <= 0 || (isComposed(character) && !isPresentationForm(character))) {
        appendUtf8(text, character);
        return;
    }
    for (int i = 0; i < count; ++i)
        appendTakenApart(text, letters[static_cast<std::size_t>(i)]);
}
} // namespace

// MuPDF's own tables instead of ICU's normaliser, which would bring 30 MB of data into the engine. For these
// blocks the outcome is that of NFKC; a test compares every character.
void appendSpelledOut(std::string &text, char32_t character)
{
    if (isPresentationForm(character))
        appendTakenApart(text, character);
    else
        appendUtf8(text, character);
}
