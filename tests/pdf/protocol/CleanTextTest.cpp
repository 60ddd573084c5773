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
