#include "pdf/PDFSelection.h"

#include "support/Printing.h"

#include <gtest/gtest.h>

namespace
{
/// Text set in characters of 10 by 10 points, every line 20 points below the last.
PDFPageText typed(const QString &text)
{
    QList<QRectF> boxes;
    QPointF pen;
    for (QChar c : text) {
        boxes.append(c == u'\n' ? QRectF() : QRectF(pen, QSizeF(10, 10)));
        pen = c == u'\n' ? QPointF(0, pen.y() + 20) : QPointF(pen.x() + 10, pen.y());
    }
    return {text, boxes};
}

const PDFPageText kPage = typed(QStringLiteral("one two\nthree four"));

PDFSelection selected(qsizetype start, qsizetype end, qint64 page = 0)
{
    return PDFSelection(page, kPage, {start, end});
}

PDFSelection together(const std::vector<PDFSelection> &selections)
{
    PDFSelection all;
    for (const PDFSelection &selection : selections)
        all.add(selection);
    return all;
}
} // namespace

TEST(PDFSelection, IsEmptyAtFirst)
{
    const PDFSelection nothing;
    EXPECT_TRUE(nothing.isEmpty());
    EXPECT_EQ(nothing.string(), QString());
    EXPECT_TRUE(nothing.pages().isEmpty());
    EXPECT_TRUE(nothing.bounds(0).isNull());
    EXPECT_TRUE(nothing.lineRectangles(0).isEmpty());
}

TEST(PDFSelection, OfNoTextIsEmpty)
{
    EXPECT_TRUE(selected(3, 3).isEmpty());
    EXPECT_TRUE(selected(900, 1000).isEmpty());
    EXPECT_TRUE(selected(5, 2).isEmpty());
}

TEST(PDFSelection, KnowsItsTextAndWhereItStands)
{
    const PDFSelection selection = selected(4, 13, 6);
    EXPECT_EQ(selection.string(), QStringLiteral("two\nthree"));
    EXPECT_EQ(selection.pages(), QList<qint64>{6});
    EXPECT_EQ(selection.ranges(6), (QList<PDFTextRange>{{4, 13}}));
    EXPECT_EQ(selection.bounds(6), QRectF(0, 0, 70, 30));
    EXPECT_EQ(selection.lineRectangles(6), (QList<QRectF>{{40, 0, 30, 10}, {0, 20, 50, 10}}));
    EXPECT_TRUE(selection.bounds(0).isNull());
}

TEST(PDFSelection, IsCutAtTheEndOfTheText)
{
    EXPECT_EQ(selected(14, 1000).string(), QStringLiteral("four"));
}

TEST(PDFSelection, ACopyGoesItsOwnWay)
{
    const PDFSelection first = selected(0, 3);
    PDFSelection copy = first;
    copy.add(selected(4, 7));
    EXPECT_EQ(first.string(), QStringLiteral("one"));
    EXPECT_EQ(copy.string(), QStringLiteral("one two"));
    EXPECT_NE(first, copy);
}

TEST(PDFSelection, PartsApartAreJoinedAsTheyStand)
{
    EXPECT_EQ(together({selected(14, 18), selected(0, 3)}).string(), QStringLiteral("one\nfour"));
    EXPECT_EQ(together({selected(14, 18), selected(8, 13)}).string(), QStringLiteral("three four"));
    EXPECT_EQ(together({selected(14, 18), selected(0, 3)}).bounds(0), QRectF(0, 0, 100, 30));
}

TEST(PDFSelection, PartsThatTouchBecomeOne)
{
    EXPECT_EQ(together({selected(0, 2), selected(2, 5)}).ranges(0), (QList<PDFTextRange>{{0, 5}}));
    EXPECT_EQ(together({selected(4, 9), selected(0, 5)}).ranges(0), (QList<PDFTextRange>{{0, 9}}));
    EXPECT_EQ(together({selected(0, 2), selected(4, 6), selected(8, 9), selected(1, 8)}).ranges(0),
              (QList<PDFTextRange>{{0, 9}}));
}

TEST(PDFSelection, AddingTheSameTwiceChangesNothing)
{
    EXPECT_EQ(together({selected(4, 7), selected(4, 7)}), selected(4, 7));
    PDFSelection itself = selected(4, 7);
    itself.add(PDFSelection(itself));
    EXPECT_EQ(itself, selected(4, 7));
}

TEST(PDFSelection, SpansPages)
{
    const PDFSelection selection = together({selected(0, 3, 9), selected(4, 7, 2)});
    EXPECT_EQ(selection.pages(), (QList<qint64>{2, 9}));
    EXPECT_EQ(selection.string(), QStringLiteral("two\none"));
    EXPECT_EQ(selection.bounds(2), QRectF(40, 0, 30, 10));
    EXPECT_EQ(selection.bounds(9), QRectF(0, 0, 30, 10));
}

TEST(PDFSelection, OfAnotherTextOfThePageIsCutToTheOneItKnows)
{
    PDFSelection selection(0, typed(QStringLiteral("short")), {0, 2});
    selection.add(selected(1, 18));
    EXPECT_EQ(selection.string(), QStringLiteral("short"));
}
