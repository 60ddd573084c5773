#include "engine/AttributeText.h"

#include "pdf/protocol/Limits.h"
#include "pdf/protocol/Utf8.h"

#include <gtest/gtest.h>

using namespace std::string_view_literals;

TEST(AttributeText, DecodesPdfDocEncoding)
{
    EXPECT_EQ(attributeText("Caf\xe9 \x84 \xa0"), "Caf\u00e9 \u2014 \u20ac");
}

TEST(AttributeText, DecodesUtf16OfBothByteOrdersWithPairs)
{
    EXPECT_EQ(attributeText("\xfe\xff\x00\x41\xd8\x3d\xde\x00"sv), "A\U0001f600");
    EXPECT_EQ(attributeText("\xff\xfe\x41\x00\x3d\xd8\x00\xde"sv), "A\U0001f600");
}

TEST(AttributeText, DecodesUtf8AfterItsMark)
{
    EXPECT_EQ(attributeText("\xef\xbb\xbf\u8868 \u00e9"), "\u8868 \u00e9");
}

TEST(AttributeText, ReplacesWhatDoesNotDecode)
{
    EXPECT_EQ(attributeText("a\x9fz"), "a\ufffdz");
    EXPECT_EQ(attributeText("\xfe\xff\xd8\x3d\x00\x41"sv), "\ufffdA");
    EXPECT_EQ(attributeText("\xfe\xff\xde\x00\x00\x41\x00"sv), "\ufffdA\ufffd");
    EXPECT_EQ(attributeText("\xef\xbb\xbf"
                            "a\xffz"),
              "a\ufffdz");
}

TEST(AttributeText, RemovesControlsAndMakesBreaksBlanks)
{
    EXPECT_EQ(attributeText("a\0b\x01\r\nc\td"sv), "ab  c d");
    EXPECT_EQ(attributeText("\xfe\xff\x00\x41\x00\x00\x20\x28\x00\x42"sv), "A B");
}

TEST(AttributeText, RemovesLanguageCodes)
{
    EXPECT_EQ(attributeText("\xfe\xff\x00\x1b\x00"
                            "e\x00n\x00\x1b\x00T"sv),
              "T");
    EXPECT_EQ(attributeText("\xfe\xff\x00\x1b\x00T"sv), "T");
}

TEST(AttributeText, IsTrimmedAndMayBeEmpty)
{
    EXPECT_EQ(attributeText("  a title \n"), "a title");
    EXPECT_EQ(attributeText(""), "");
    EXPECT_EQ(attributeText(" \t\0 "sv), "");
    EXPECT_EQ(attributeText("\xfe\xff"), "");
}

TEST(AttributeText, IsCutByCharactersNotBytes)
{
    std::string euros;
    for (int i = 0; i < 1 << 20; ++i)
        euros += "\u20ac";
    const std::string text = attributeText("\xef\xbb\xbf" + euros);
    EXPECT_EQ(text.size(), 3 * kMaxAttributeCharacters);
    EXPECT_TRUE(isValidUtf8(text));
}
