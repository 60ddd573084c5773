#include "pdf/PDFPageText.h"

#include "support/Printing.h"

#include <gtest/gtest.h>

namespace
{
/// Text set in characters of 10 by 10 points, every line 20 points below the last, from 0, 0 on.
PDFPageText typed(const QString &text)
{
    QList<QRectF> boxes;
    QPointF pen;
    for (QChar c : text) {
        if (c == u'\n') {
            boxes.append(QRectF());
            pen = {0, pen.y() + 20};
        } else {
            boxes.append(QRectF(pen, QSizeF(10, 10)));
            if (!c.isHighSurrogate())
                pen.rx() += 10;
        }
    }
    return {text, boxes};
}

/// One line whose characters stand from the right to the left, the first from 90 to 100.
PDFPageText typedFromTheRight(const QString &text)
{
    QList<QRectF> boxes;
    for (qsizetype i = 0; i < text.size(); ++i)
        boxes.append(QRectF(90 - 10 * double(i), 0, 10, 10));
    return {text, boxes};
}

QString wordAt(const PDFPageText &text, qsizetype index)
{
    return text.string(text.wordAt(index));
}

const PDFPageText kTwoLines = typed(QStringLiteral("one two\nthree four\n"));
} // namespace

TEST(PDFPageText, HasNothingWithoutText)
{
    const PDFPageText empty;
    EXPECT_TRUE(empty.isEmpty());
    EXPECT_EQ(empty.characterAt({5, 5}), std::nullopt);
    EXPECT_EQ(empty.nearestCharacter({5, 5}), std::nullopt);
    EXPECT_EQ(empty.caretAt({5, 5}), 0);
    EXPECT_EQ(empty.wordAt(3), PDFTextRange());
    EXPECT_EQ(empty.lineAt(3), PDFTextRange());
    EXPECT_TRUE(empty.rangeBetween({0, 0}, {9, 9}, PDFTextUnit::Line).isEmpty());
    EXPECT_TRUE(empty.lineRectangles({0, 5}).isEmpty());
}

TEST(PDFPageText, RangesBeyondTheTextAreCut)
{
    EXPECT_EQ(kTwoLines.string({-5, 3}), QStringLiteral("one"));
    EXPECT_EQ(kTwoLines.string({14, 900}), QStringLiteral("four\n"));
    EXPECT_EQ(kTwoLines.string({900, 1000}), QString());
    EXPECT_EQ(kTwoLines.string({5, 2}), QString());
    EXPECT_TRUE(kTwoLines.bounds({900, 1000}).isNull());
}

TEST(PDFPageText, BoundsEncloseARange)
{
    EXPECT_EQ(kTwoLines.bounds({4, 7}), QRectF(40, 0, 30, 10));
    EXPECT_EQ(kTwoLines.bounds({4, 13}), QRectF(0, 0, 70, 30));
    EXPECT_TRUE(kTwoLines.bounds({7, 8}).isNull()) << "a line end stands nowhere";
}

TEST(PDFPageText, BoundsEncloseCharactersWithoutWidth)
{
    const PDFPageText text(QStringLiteral("ab"), {QRectF(10, 10, 0, 10), QRectF(30, 10, 0, 10)});
    EXPECT_EQ(text.bounds({0, 2}), QRectF(10, 10, 20, 10));
}

TEST(PDFPageText, LightsARectangleForEachLine)
{
    EXPECT_EQ(kTwoLines.lineRectangles({4, 13}), (QList<QRectF>{{40, 0, 30, 10}, {0, 20, 50, 10}}));
}

TEST(PDFPageText, LightsSeveralRectanglesWhereALineIsScattered)
{
    // The first two characters in logical order stand at both ends of the line.
    const PDFPageText text(QStringLiteral("abc"),
                           {QRectF(0, 0, 10, 10), QRectF(90, 0, 10, 10), QRectF(80, 0, 10, 10)});
    EXPECT_EQ(text.lineRectangles({0, 3}), (QList<QRectF>{{0, 0, 10, 10}, {80, 0, 20, 10}}));
}

TEST(PDFPageText, FindsTheCharacterUnderAPoint)
{
    EXPECT_EQ(kTwoLines.characterAt({45, 5}), 4);
    EXPECT_EQ(kTwoLines.characterAt({45, 25}), 12);
    EXPECT_EQ(kTwoLines.characterAt({45, 15}), std::nullopt);
    EXPECT_EQ(kTwoLines.characterAt({500, 5}), std::nullopt);
}

TEST(PDFPageText, WhereLinesOverlapTheNearerMiddleCounts)
{
    const PDFPageText text(QStringLiteral("a\nb"), {QRectF(0, 0, 10, 14), QRectF(), QRectF(0, 10, 10, 14)});
    EXPECT_EQ(text.characterAt({5, 11}), 0);
    EXPECT_EQ(text.characterAt({5, 13}), 2);
}

TEST(PDFPageText, BesideAShortLineItsEndIsNearest)
{
    const PDFPageText text = typed(QStringLiteral("a much longer line\nshort\nagain a longer line"));
    EXPECT_EQ(text.nearestCharacter({100, 24}), 23);
    EXPECT_EQ(text.caretAt({100, 24}), 24);
}

TEST(PDFPageText, BelowAColumnTheOtherOneIsNotNearer)
{
    // Two columns: the left one goes on where the right one has ended.
    const PDFPageText text(
        QStringLiteral("a\nb\nc"),
        {QRectF(0, 0, 100, 10), QRectF(), QRectF(0, 20, 100, 10), QRectF(), QRectF(120, 0, 100, 10)});
    EXPECT_EQ(text.nearestCharacter({170, 25}), 4);
}

TEST(PDFPageText, CaretsStandBetweenCharacters)
{
    EXPECT_EQ(kTwoLines.caretAt({43, 5}), 4);
    EXPECT_EQ(kTwoLines.caretAt({47, 5}), 5);
    EXPECT_EQ(kTwoLines.caretAt({-50, 5}), 0);
    EXPECT_EQ(kTwoLines.caretAt({500, 5}), 7);
    EXPECT_EQ(kTwoLines.caretAt({500, 500}), 18);
}

TEST(PDFPageText, CaretsFollowRightToLeftText)
{
    const PDFPageText text = typedFromTheRight(QStringLiteral("שלום"));
    EXPECT_EQ(text.caretAt({97, 5}), 0);
    EXPECT_EQ(text.caretAt({93, 5}), 1);
    EXPECT_EQ(text.caretAt({0, 5}), 4);
}

TEST(PDFPageText, CaretsFollowTextThatRunsDown)
{
    const PDFPageText text(QStringLiteral("ab"), {QRectF(0, 0, 10, 10), QRectF(0, 10, 10, 10)});
    EXPECT_EQ(text.caretAt({5, 3}), 0);
    EXPECT_EQ(text.caretAt({5, 7}), 1);
    EXPECT_EQ(text.caretAt({5, 17}), 2);
}

TEST(PDFPageText, CaretsNeverStandInsideAPair)
{
    const PDFPageText text = typed(QStringLiteral("a\U0001f600b"));
    EXPECT_EQ(text.caretAt({13, 5}), 1);
    EXPECT_EQ(text.caretAt({17, 5}), 3);
}

TEST(PDFPageText, KnowsWords)
{
    EXPECT_EQ(wordAt(kTwoLines, 0), QStringLiteral("one"));
    EXPECT_EQ(wordAt(kTwoLines, 2), QStringLiteral("one"));
    EXPECT_EQ(wordAt(kTwoLines, 3), QStringLiteral(" "));
    EXPECT_EQ(wordAt(kTwoLines, 6), QStringLiteral("two"));
    EXPECT_EQ(wordAt(kTwoLines, 10), QStringLiteral("three"));
    EXPECT_EQ(wordAt(typed(QStringLiteral("(don't)")), 3), QStringLiteral("don't"));
    EXPECT_EQ(wordAt(typed(QStringLiteral("na\u00efve e\u0301t\u00e9")), 7),
              QStringLiteral("e\u0301t\u00e9"));
}

TEST(PDFPageText, WordsEndWithTheirLine)
{
    EXPECT_EQ(wordAt(typed(QStringLiteral("inter\nesting")), 2), QStringLiteral("inter"));
    EXPECT_EQ(wordAt(kTwoLines, 7), QStringLiteral("two")) << "at the line's end";
    EXPECT_EQ(wordAt(kTwoLines, 900), QStringLiteral("four"));
}

TEST(PDFPageText, KnowsLines)
{
    EXPECT_EQ(kTwoLines.lineAt(0), (PDFTextRange{0, 7}));
    EXPECT_EQ(kTwoLines.lineAt(7), (PDFTextRange{0, 7}));
    EXPECT_EQ(kTwoLines.lineAt(8), (PDFTextRange{8, 18}));
    EXPECT_EQ(kTwoLines.lineAt(-3), (PDFTextRange{0, 7}));
    EXPECT_EQ(typed(QStringLiteral("\nx")).lineAt(0), (PDFTextRange{0, 0}));
    EXPECT_EQ(typed(QStringLiteral("\n\nx")).lineAt(1), (PDFTextRange{1, 1}));
}

TEST(PDFPageText, SelectsFromOnePointToAnother)
{
    const auto selected = [](QPointF from, QPointF to, PDFTextUnit unit) {
        return kTwoLines.string(kTwoLines.rangeBetween(from, to, unit));
    };
    EXPECT_EQ(selected({41, 5}, {58, 25}, PDFTextUnit::Character), QStringLiteral("two\nthree "));
    EXPECT_EQ(selected({58, 25}, {41, 5}, PDFTextUnit::Character), QStringLiteral("two\nthree "));
    EXPECT_EQ(selected({55, 5}, {5, 25}, PDFTextUnit::Word), QStringLiteral("two\nthree"));
    EXPECT_EQ(selected({5, 25}, {55, 5}, PDFTextUnit::Word), QStringLiteral("two\nthree"));
    EXPECT_EQ(selected({55, 5}, {55, 5}, PDFTextUnit::Line), QStringLiteral("one two"));
    EXPECT_EQ(selected({55, 5}, {55, 25}, PDFTextUnit::Line), QStringLiteral("one two\nthree four"));
}
