#include "pdf/protocol/CleanText.h"

#include "pdf/protocol/Limits.h"
#include "pdf/protocol/Utf8.h"

#include <gtest/gtest.h>

TEST(CleanText, MayHaveAnyCharactersOfAnyLength)
{
    EXPECT_TRUE(isCleanAttribute(""));
    EXPECT_TRUE(isCleanAttribute("a caf\u00e9 \u05d0 \u20ac \U0001f600"));
}

TEST(CleanText, IsCountedInCharacters)
{
    std::string text;
    for (std::uint32_t i = 0; i < kMaxAttributeCharacters; ++i)
        text += "\U0001f600";
    EXPECT_TRUE(isCleanAttribute(text));
    EXPECT_FALSE(isCleanAttribute(text + "x"));
}

TEST(CleanText, IsOneTrimmedLineWithoutControlCharacters)
{
    for (const char *text : {"a\nb", "a\tb", "a\x7f",
                             "a\u0085"
                             "b",
                             "a\u2029b", "\u3000a", "a ", "\xff"})
        EXPECT_FALSE(isCleanAttribute(text)) << text;
}

TEST(CleanText, OfALabelHasNoDirectionMarks)
{
    for (const char *text : {"\u061c", "\u200e", "\u200f", "\u202a", "\u202e", "\u2066", "\u2069"}) {
        EXPECT_FALSE(isCleanLabel(text)) << text;
        EXPECT_TRUE(isCleanAttribute(text)) << text;
    }
    EXPECT_TRUE(isCleanLabel("\u202f\u2065\u206a"));
}

TEST(CleanText, OfALabelIsOneLineOfLimitedLength)
{
    EXPECT_TRUE(isCleanLabel(" a "));
    EXPECT_FALSE(isCleanLabel("a\nb"));
    EXPECT_FALSE(isCleanLabel("\xff"));
    EXPECT_TRUE(isCleanLabel(std::string(kMaxLabelCharacters, 'x')));
    EXPECT_FALSE(isCleanLabel(std::string(kMaxLabelCharacters + 1, 'x')));
}
