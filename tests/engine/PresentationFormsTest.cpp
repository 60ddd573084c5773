#include "engine/PresentationForms.h"

#include <gtest/gtest.h>
#include <unicode/normalizer2.h>

namespace
{
std::string spelledOut(char32_t character)
{
    std::string text;
    appendSpelledOut(text, character);
    return text;
}

std::string normalised(char32_t character)
{
    UErrorCode status = U_ZERO_ERROR;
    std::string text;
    icu::Normalizer2::getNFKCInstance(status)
        ->normalize(icu::UnicodeString(UChar32(character)), status)
        .toUTF8String(text);
    EXPECT_TRUE(U_SUCCESS(status));
    return text;
}
} // namespace

TEST(PresentationForms, AreSpelledOutAsTheStandardNormalisationDoes)
{
    for (char32_t c = 0xfb00; c <= 0xfb06; ++c)
        EXPECT_EQ(spelledOut(c), normalised(c)) << std::hex << unsigned(c);
    for (char32_t c = 0xfb1d; c <= 0xfdff; ++c)
        EXPECT_EQ(spelledOut(c), normalised(c)) << std::hex << unsigned(c);
    for (char32_t c = 0xfe70; c <= 0xfeff; ++c)
        EXPECT_EQ(spelledOut(c), normalised(c)) << std::hex << unsigned(c);
}

TEST(PresentationForms, LeaveOtherCharactersAlone)
{
    EXPECT_EQ(spelledOut(U'\u00bd'), "\u00bd");
    EXPECT_EQ(spelledOut(U'\u00e9'), "\u00e9");
    EXPECT_EQ(spelledOut(U'\u2460'), "\u2460");
}
