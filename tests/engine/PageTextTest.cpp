#include "OpenedDocument.h"

#include "pdf/protocol/Limits.h"
#include "pdf/protocol/Utf8.h"
#include "support/PdfBuilder.h"

namespace
{
std::string textOf(const QStringList &lines)
{
    return OpenedDocument(PdfBuilder().page(lines).build()).text();
}

std::string textOf(const PdfPage &page)
{
    return OpenedDocument(PdfBuilder().page(page).build()).text();
}

/// Shows a font's string again and again, each time `width` points further right. Each is a text object of
/// its own: MuPDF gathers one as a whole, slowly when it is large.
QByteArray oneLineOf(const QByteArray &fontAndString, int times, double width)
{
    const qsizetype string = fontAndString.indexOf("Tf") + 2;
    QByteArray drawing;
    for (int i = 0; i < times; ++i)
        drawing += "BT " + fontAndString.left(string) + ' ' + QByteArray::number(10 + i * width, 'f', 4) +
                   " 10 Td" + fontAndString.mid(string) + " Tj ET\n";
    return drawing;
}
} // namespace

TEST(PageText, HasALineForEachOneOnThePage)
{
    EXPECT_EQ(textOf({QStringLiteral("First line"), QStringLiteral("second line")}),
              "First line\nsecond line\n");
}

TEST(PageText, IsEmptyForAPageWithoutText)
{
    EXPECT_EQ(textOf(QStringList()), "");
}

TEST(PageText, SpellsLigaturesOut)
{
    EXPECT_EQ(textOf({QStringLiteral("e\ufb03cient \ufb01re \ufb02ow \ufb00 \ufb04")}),
              "efficient fire flow ff ffl\n");
}

TEST(PageText, DoesNotJoinAtHyphens)
{
    EXPECT_EQ(textOf({QStringLiteral("an inter-"), QStringLiteral("esting word")}),
              "an inter-\nesting word\n");
}

TEST(PageText, LeavesOutWhatLiesOutsideThePage)
{
    const PdfPage page = {.lines = {QStringLiteral("Inside")},
                          .drawing = "BT /F1 12 Tf 5000 700 Td (Outside) Tj ET"};
    EXPECT_EQ(textOf(page), "Inside\n");
}

TEST(PageText, LeavesOutTheHiddenEndOfALine)
{
    const PdfPage page = {.mediaBox = PdfBox{0, 0, 600, 800},
                          .cropBox = PdfBox{0, 0, 100, 800},
                          .drawing = "BT /F1 12 Tf 10 700 Td (seen                        unseen) Tj ET"};
    EXPECT_EQ(QByteArray::fromStdString(textOf(page)).trimmed(), QByteArray("seen"));
}

TEST(PageText, HasNoControlCharacters)
{
    const PdfPage page = {.lines = {QStringLiteral("a\u0001b\u0002c\u007fd\u0085e\u009ff")}};
    EXPECT_EQ(textOf(page), "a b c d e f\n");
}

TEST(PageText, IsCutAtTheLimitWhereALineEnds)
{
    // Each line is a text object of its own: MuPDF gathers one as a whole, slowly when it is this large.
    QByteArray drawing;
    const QByteArray show = " Td (" + QByteArray(1000, 'x') + ") Tj ET\n";
    for (int i = 0; i < 1100; ++i)
        drawing += "BT /F1 1 Tf 72 " + QByteArray::number(5000 - i) + show;
    const PdfPage page = {.mediaBox = PdfBox{0, 0, 5000, 6000}, .drawing = drawing};
    const std::string text = textOf(page);
    EXPECT_LE(text.size(), kMaxPageTextBytes);
    EXPECT_GT(text.size(), kMaxPageTextBytes - 1100);
    EXPECT_EQ(text.back(), '\n');
}

TEST(PageText, OfOneEndlessLineIsCutBehindAWord)
{
    const QByteArray words = "/F1 0.001 Tf (" + QByteArray("abcd ").repeated(1000) + ')';
    const PdfPage page = {.mediaBox = PdfBox{0, 0, 5000, 100}, .drawing = oneLineOf(words, 220, 2.446)};
    const std::string text = textOf(page);
    EXPECT_LE(text.size(), kMaxPageTextBytes);
    EXPECT_GT(text.size(), kMaxPageTextBytes - 10);
    EXPECT_EQ(text.substr(text.size() - 5), "abcd\n");
}

TEST(PageText, OfOneEndlessWordIsCutBehindACharacter)
{
    // The second font's codes are the characters of the line: 02 is the one of three bytes.
    const QByteArray letters = "<" + QByteArray("02").repeated(1000) + "> Tj\n";
    const PdfPage page = {.lines = {QStringLiteral("x世")},
                          .mediaBox = PdfBox{0, 0, 5000, 1000},
                          .drawing = "BT /F2 0.001 Tf 10 10 Td <01> Tj\n" + letters.repeated(350) + "ET"};
    const std::string text = textOf(page);
    EXPECT_LE(text.size(), kMaxPageTextBytes);
    EXPECT_GT(text.size(), kMaxPageTextBytes - 5);
    EXPECT_TRUE(isValidUtf8(text));
    EXPECT_EQ(text.back(), '\n');
}

TEST(PageText, PutsHebrewIntoLogicalOrder)
{
    const QString line = QStringLiteral("שלום עולם");
    EXPECT_EQ(textOf({PdfBuilder::inVisualOrder(line)}), line.toStdString() + "\n");
}

TEST(PageText, SpellsArabicShapesOutInLogicalOrder)
{
    // The word as its letters' shapes stand on paper, the ligature of lam and alef among them.
    EXPECT_EQ(textOf({QStringLiteral("\ufee1\ufefc\ufeb4\ufedf\ufe8d")}), "السلام\n");
}

TEST(PageText, KeepsTheDigitsOfNumbersInOrder)
{
    // On paper from left to right: world 1,234 hello.
    EXPECT_EQ(textOf({QStringLiteral("םלוע 1,234 םולש")}), "שלום 1,234 עולם\n");
}

TEST(PageText, KeepsLatinWordsInRightToLeftLines)
{
    EXPECT_EQ(textOf({QStringLiteral("םלוע abc def םולש")}), "שלום abc def עולם\n");
}

TEST(PageText, KeepsALatinLineWithOneHebrewWord)
{
    EXPECT_EQ(textOf({QStringLiteral("a line with םולש embedded")}), "a line with שלום embedded\n");
}

TEST(PageText, TurnsBracketsRoundWithTheirWords)
{
    EXPECT_EQ(textOf({QStringLiteral("(םלוע) םולש")}), "שלום (עולם)\n");
}

TEST(PageText, LeavesLinesAloneThatWereDrawnFromRightToLeft)
{
    // Each letter on its own, every next one further left; the codes are those of the line below.
    const PdfPage page = {.lines = {QStringLiteral("שלום")},
                          .drawing = "BT /F2 12 Tf 300 500 Td <01> Tj -7.2 0 Td <02> Tj -7.2 0 Td <03> Tj "
                                     "-7.2 0 Td <04> Tj -14.4 0 Td <01> Tj -7.2 0 Td <02> Tj ET"};
    EXPECT_EQ(textOf(page), "שלום של\nםולש\n");
}

TEST(PageText, IsUtf8WhateverTheFontClaims)
{
    // A surrogate and a character beyond Unicode, as a font may map its codes.
    const PdfPage page = {.lines = {QStringLiteral("ok")},
                          .drawing = "BT /F2 12 Tf 72 300 Td <fefdfc> Tj ET"};
    EXPECT_TRUE(isValidUtf8(textOf(page)));
}
