#include "pdf/protocol/Utf8.h"

#include <gtest/gtest.h>

TEST(Utf8, IsDecodedAsItWasMade)
{
    const std::u32string characters = U"a\u00e9\u07ff\u0800\u20ac\U00010000\U0010ffff";
    std::string text;
    for (char32_t c : characters)
        appendUtf8(text, c);
    EXPECT_EQ(decodedUtf8(text), characters);
}

TEST(Utf8, AcceptsEveryLengthAndTheLastCharacter)
{
    EXPECT_TRUE(isValidUtf8(""));
    EXPECT_TRUE(isValidUtf8("a\u00e9\u20ac\U0001f600\U0010ffff"));
    EXPECT_TRUE(isValidUtf8(std::string_view("a\0b", 3)));
}

TEST(Utf8, RefusesOverlongSurrogateCutAndStrayBytes)
{
    for (const char *bytes : {"\x80", "\xc1\x81", "\xe0\x9f\xbf", "\xed\xbf\xbf", "\xf0\x8f\xbf\xbf",
                              "\xf4\x90\x80\x80", "\xf8\x88\x80\x80\x80", "\xe2\x82", "a\xc3"})
        EXPECT_FALSE(isValidUtf8(bytes)) << bytes;
}

TEST(Utf8, WritesWhatItAccepts)
{
    std::string text;
    for (char32_t c : U"a\u00e9\u20ac\U0001f600")
        appendUtf8(text, c);
    EXPECT_EQ(text, std::string("a\u00e9\u20ac\U0001f600") + '\0');
    text.clear();
    for (char32_t c : {char32_t(0xd800), char32_t(0x110000), char32_t(-1)})
        appendUtf8(text, c);
    EXPECT_EQ(text, "\ufffd\ufffd\ufffd");
}

TEST(Utf8, RepairsWhatIsBrokenAndKeepsTheRest)
{
    EXPECT_EQ(repairedUtf8("a\xff\u00e9\xe2\x82z"), "a\ufffd\u00e9\ufffd\ufffdz");
    EXPECT_TRUE(isValidUtf8(repairedUtf8("\xed\xa0\x80\xf4\xbf")));
}
