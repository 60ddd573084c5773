#include "indexing/PaperText.h"

#include "support/Printing.h"
#include "support/Words.h"

#include <gtest/gtest.h>

namespace
{
QByteArray textOf(QByteArrayView page)
{
    PaperText text;
    text.addPage(1, page);
    return text.fullText();
}

/// Whether Unicode or this program ends a word at `character`.
bool endsWords(char32_t character)
{
    return QChar::isSpace(character) || character == 0;
}

TEST(PaperText, JoinsTheWordsOfAPageWithSingleBlanks)
{
    EXPECT_EQ(textOf("  one\n\ttwo \r\n three  "), "one two three");
}

TEST(PaperText, KeepsCasePunctuationAndHyphens)
{
    EXPECT_EQ(textOf("Some-\nthing, (Else)!"), "Some- thing, (Else)!");
}

TEST(PaperText, SplitsAtEveryWhiteSpaceCharacterOfUnicodeAndAtNoOther)
{
    for (char32_t c = 0; c <= 0x10FFFF; ++c) {
        if (QChar::isSurrogate(c))
            continue;
        const QByteArray character = QString::fromUcs4(&c, 1).toUtf8();
        const QByteArray page = "a" + character + "b";
        ASSERT_EQ(textOf(page), endsWords(c) ? QByteArray("a b") : page) << "U+" << std::hex << uint32_t(c);
    }
}

TEST(PaperText, ReadsNothingBehindAPageThatEndsWithinACharacter)
{
    EXPECT_EQ(textOf(QByteArrayView("a\xE2\x80\x80", 3)), "a\xE2\x80");
    EXPECT_EQ(textOf(QByteArrayView("\xC2\xA0", 1)), "\xC2");
}

TEST(PaperText, KnowsThePageOfEachWord)
{
    PaperText text;
    text.addPage(1, "one two");
    text.addPage(2, " \n ");
    text.addPage(3, "three");
    ASSERT_EQ(text.pages().size(), 2U);
    EXPECT_EQ(text.pages()[0].number, 1);
    EXPECT_EQ(text.pages()[0].wordCount, 2);
    EXPECT_EQ(text.pages()[1].number, 3);
    EXPECT_EQ(text.fullText().sliced(text.pages()[1].begin), "three");
    EXPECT_EQ(text.fullText().first(text.pages()[0].end), "one two");
    EXPECT_EQ(text.wordCount(), 3);
}

TEST(PaperText, IsEmptyWithoutWords)
{
    PaperText text;
    text.addPage(1, "");
    text.addPage(2, "\xC2\xA0");
    EXPECT_TRUE(text.pages().empty());
    EXPECT_EQ(text.fullText(), "");
    EXPECT_EQ(text.firstWords(1000), QByteArrayView(""));
    EXPECT_EQ(text.firstCharacters(8000), QString());
}

TEST(PaperText, AnswersTheFirstWords)
{
    PaperText text;
    text.addPage(1, "one two");
    text.addPage(2, "three four");
    EXPECT_EQ(text.firstWords(3), QByteArrayView("one two three"));
    EXPECT_EQ(text.firstWords(4), QByteArrayView("one two three four"));
    EXPECT_EQ(text.firstWords(5), QByteArrayView("one two three four"));
    EXPECT_EQ(text.firstWords(0), QByteArrayView(""));
}

TEST(PaperText, CountsFirstCharactersAsPeoplePerceiveThem)
{
    // An e with thirty accents is one character of sixty-one bytes.
    const QByteArray accented = "e" + QByteArray("\xCC\x81").repeated(30);
    PaperText text;
    text.addPage(1, QByteArray(accented.repeated(100) + "tail"));
    EXPECT_EQ(text.firstCharacters(99).toUtf8(), accented.repeated(99));
    EXPECT_EQ(text.firstCharacters(101).toUtf8(), accented.repeated(100) + "t");
    EXPECT_EQ(text.firstCharacters(1000).toUtf8(), text.fullText());
}

TEST(PaperText, AnswersFirstCharactersOfTextInAnyScript)
{
    PaperText text;
    text.addPage(1, QStringLiteral("漢字かな𝔘").repeated(100).toUtf8());
    EXPECT_EQ(text.firstCharacters(251), QStringLiteral("漢字かな𝔘").repeated(50) + u"漢");
}

TEST(PaperText, EndsAtTheFirstWordWithoutRoom)
{
    PaperText text(10);
    text.addPage(1, "one two");
    EXPECT_FALSE(text.isFull());
    text.addPage(2, "me three a");
    EXPECT_TRUE(text.isFull());
    text.addPage(3, "b");
    EXPECT_EQ(text.fullText(), "one two me");
    EXPECT_EQ(text.wordCount(), 3);
    EXPECT_EQ(text.pages().size(), 2U);
}

TEST(PaperText, LeavesOutAWordLongerThanAllRoom)
{
    PaperText text(10);
    text.addPage(1, QByteArray(11, 'x'));
    EXPECT_TRUE(text.isFull());
    EXPECT_EQ(text.fullText(), "");
    EXPECT_TRUE(text.pages().empty());
}
} // namespace
