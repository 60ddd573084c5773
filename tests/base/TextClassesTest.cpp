#include "base/TextClasses.h"

#include "support/Printing.h"

#include <gtest/gtest.h>

TEST(TextClasses, CountsLettersMarksAndNumbersOfEveryScriptAsAlphanumeric)
{
    for (const char32_t c : {U'a', U'Z', U'7', U'é', U'ж', U'中', U'\u0301', U'٣', U'Ⅷ', U'\U0001D4D0'})
        EXPECT_TRUE(isAlphanumeric(c)) << static_cast<unsigned>(c);
    for (const char32_t c : {U'_', U' ', U'-', U'"', U'’', U'€', U'\U0001F600'})
        EXPECT_FALSE(isAlphanumeric(c)) << static_cast<unsigned>(c);
}

TEST(TextClasses, TrimsBlanksAndTabsButNotLineBreaks)
{
    EXPECT_EQ(trimmedHorizontally(QStringLiteral(" \t\u00A0\u3000graph theory\u2003 ")), u"graph theory");
    EXPECT_EQ(trimmedHorizontally(QStringLiteral(" \n ")), u"\n");
    EXPECT_EQ(trimmedHorizontally(QStringLiteral(" \t ")), QString());
    EXPECT_EQ(trimmedHorizontally(QString()), QString());
}

TEST(TextClasses, TextFromAFileCanNeitherForgeALineNorCommandTheTerminal)
{
    EXPECT_EQ(onOneLine(QStringLiteral("a\x1b[2Jb\r\nc\u0085d\u2028e")), u"a [2Jb  c d e");
    EXPECT_EQ(onOneLine(QStringLiteral("rtl-\u202efdp.exe\u2069.pdf")), u"rtl- fdp.exe .pdf");
    EXPECT_EQ(onOneLine(QStringLiteral("плоский גרף 🧪")), u"плоский גרף 🧪");
}

TEST(TextClasses, TakesTheFirstUserPerceivedCharacters)
{
    EXPECT_EQ(firstCharacters(QStringLiteral("graph"), 3), u"gra");
    EXPECT_EQ(firstCharacters(QStringLiteral("graph"), 9), u"graph");
    EXPECT_EQ(firstCharacters(QStringLiteral("e\u0301e\u0301e\u0301"), 2), u"e\u0301e\u0301");
    EXPECT_EQ(firstCharacters(QStringLiteral("👩‍🔬👩‍🔬x"), 1), u"👩‍🔬");
    EXPECT_EQ(firstCharacters(QString(), 5), QString());
}

TEST(TextClasses, NeverCutsACharacterHoweverManyMarksItCarries)
{
    const QString heavy = u'e' + QString(5000, QChar(0x0301));
    EXPECT_EQ(firstCharacters(heavy + heavy + u'x', 2), heavy + heavy);
}

TEST(TextClasses, TakesFromALongTextAsFromAShortOne)
{
    const QString text(1'000'000, u'a');
    EXPECT_EQ(firstCharacters(text, 8000), QString(8000, u'a'));
}
