// The text of pages with the box of every character.
#include "OpenedDocument.h"

#include "pdf/protocol/Limits.h"
#include "pdf/protocol/Utf8.h"
#include "support/PdfBuilder.h"

namespace
{
PlacedTextReply placedTextOf(const PdfPage &page)
{
    OpenedDocument document(PdfBuilder().page(page).build());
    PlacedTextReply reply = document.placedText();
    EXPECT_EQ(reply.text, document.text()) << "both must be the same text";
    EXPECT_EQ(reply.boxes.size(), characterCount(reply.text));
    return reply;
}

/// Courier at 10 points: characters of 6 points each.
PdfPage typed(const QByteArray &text, const PdfPage &page = {})
{
    PdfPage out = page;
    out.mediaBox = page.mediaBox.value_or(PdfBox{0, 0, 600, 800});
    out.entries += "/Resources<</Font<</C<</Type/Font/Subtype/Type1/BaseFont/Courier>>>>>>";
    out.drawing = "BT /C 10 Tf 100 700 Td (" + text + ") Tj ET";
    return out;
}

/// A line of the second font, 12 points: characters of 7.2 points each, from 100 on.
PdfPage printed(const QString &line, const QByteArray &codes)
{
    return {.lines = {line},
            .mediaBox = PdfBox{0, 0, 600, 800},
            .drawing = "BT /F2 12 Tf 100 400 Td <" + codes + "> Tj ET"};
}

/// The boxes of the line that `printed` drew, which comes before the one that gives its characters codes.
std::vector<PageBox> firstLine(const PlacedTextReply &reply)
{
    const std::size_t count = decodedUtf8(reply.text).find(U'\n');
    return {reply.boxes.begin(), reply.boxes.begin() + std::ptrdiff_t(count)};
}
} // namespace

TEST(PlacedText, HasABoxForEveryCharacterInTheirOrder)
{
    const PlacedTextReply reply = placedTextOf(typed("ab c"));
    ASSERT_EQ(reply.text, "ab c\n");
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_NEAR(reply.boxes[i].left, 100 + 6 * double(i), 0.1);
        EXPECT_NEAR(reply.boxes[i].right, 106 + 6 * double(i), 0.1);
        EXPECT_LT(reply.boxes[i].top, 100); // the baseline: 800 less 700
        EXPECT_GT(reply.boxes[i].bottom, 100);
    }
}

TEST(PlacedText, LineEndsStandNowhere)
{
    EXPECT_EQ(placedTextOf(typed("a")).boxes.back(), PageBox());
}

TEST(PlacedText, LettersOfALigatureShareItsWidth)
{
    const PlacedTextReply reply = placedTextOf(printed(QStringLiteral("\ufb03"), "01"));
    ASSERT_EQ(reply.text.substr(0, 4), "ffi\n");
    const std::vector<PageBox> boxes = firstLine(reply);
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_NEAR(boxes[i].left, 100 + 2.4 * double(i), 0.1);
        EXPECT_NEAR(boxes[i].right, 102.4 + 2.4 * double(i), 0.1);
    }
}

TEST(PlacedText, MarksDoNotTakeTheirLettersWidth)
{
    // The mark is drawn over the letter before it.
    PdfPage page = printed(QStringLiteral("\u0301"), "");
    page.drawing = "BT /F1 12 Tf 100 400 Td (e) Tj /F2 12 Tf 0 0 Td <01> Tj ET";
    const std::vector<PageBox> boxes = firstLine(placedTextOf(page));
    ASSERT_EQ(boxes.size(), 2u);
    EXPECT_NEAR(boxes[0].right - boxes[0].left, 6.7, 0.2);
}

TEST(PlacedText, RightToLeftTextHasItsBoxesFromTheRight)
{
    const QString word = QStringLiteral("שלום");
    const PlacedTextReply reply = placedTextOf(printed(word, "04030201"));
    ASSERT_EQ(reply.text.substr(0, 9), word.toStdString() + "\n");
    const std::vector<PageBox> boxes = firstLine(reply);
    for (std::size_t i = 0; i < 4; ++i)
        EXPECT_NEAR(boxes[i].right, 100 + 7.2 * double(4 - i), 0.1);
}

TEST(PlacedText, BoxesFollowTheirCharactersInMixedLines)
{
    // On paper from left to right: hello in Hebrew, then 12.
    const PlacedTextReply reply = placedTextOf({.lines = {QStringLiteral("12 םולש")}});
    EXPECT_EQ(reply.text, "שלום 12\n");
    EXPECT_LT(reply.boxes[5].left, reply.boxes[6].left) << "digits run to the right";
    EXPECT_LT(reply.boxes[6].right, reply.boxes[3].left) << "and stand left of the word";
}

TEST(PlacedText, SpelledOutShapesHaveTheirWholeGlyph)
{
    // Lam and alef in one shape.
    const std::vector<PageBox> boxes = firstLine(placedTextOf(printed(QStringLiteral("\ufefb"), "01")));
    ASSERT_EQ(boxes.size(), 2u);
    EXPECT_EQ(boxes[0], boxes[1]);
    EXPECT_NEAR(boxes[0].right - boxes[0].left, 7.2, 0.1);
}

TEST(PlacedText, CharactersOfTwoUnitsHaveOneBox)
{
    const PlacedTextReply reply = placedTextOf({.lines = {QStringLiteral("\U0001f600x")}});
    EXPECT_EQ(reply.boxes.size(), 3u);
}

TEST(PlacedText, TurnsWithThePage)
{
    // The first letter stands left of the second on an upright page; a quarter clockwise it stands above.
    const PlacedTextReply reply = placedTextOf(typed("ab", {.rotation = 90}));
    EXPECT_NEAR(reply.boxes[0].top, 100, 0.1);
    EXPECT_NEAR(reply.boxes[1].top, 106, 0.1);
    EXPECT_NEAR(reply.boxes[0].left, reply.boxes[1].left, 0.1);
    EXPECT_GT(reply.boxes[0].right, 700);
}

TEST(PlacedText, BeginsWhereThePageIsCropped)
{
    const PlacedTextReply reply = placedTextOf(typed("a", {.cropBox = PdfBox{50, 0, 600, 750}}));
    EXPECT_NEAR(reply.boxes[0].left, 50, 0.1);
    EXPECT_LT(reply.boxes[0].top, 50);
    EXPECT_GT(reply.boxes[0].bottom, 50);
}

TEST(PlacedText, BoxesEndAtTheEdgeOfThePage)
{
    const PlacedTextReply reply = placedTextOf(typed("a", {.cropBox = PdfBox{103, 0, 600, 800}}));
    ASSERT_EQ(reply.text, "a\n");
    EXPECT_EQ(reply.boxes[0].left, 0);
    EXPECT_NEAR(reply.boxes[0].right, 3, 0.1);
}

TEST(PlacedText, LeavesOutWhatNobodySees)
{
    EXPECT_EQ(placedTextOf(typed("seen                unseen", {.cropBox = PdfBox{0, 0, 130, 800}}))
                  .text.substr(0, 4),
              "seen");
}

TEST(PlacedText, ObeysTheUserUnit)
{
    PdfPage page = typed("a");
    page.userUnit = 2;
    EXPECT_NEAR(placedTextOf(page).boxes[0].left, 200, 0.1);
}

TEST(PlacedText, OfAPageLargerThanAnyIsSound)
{
    for (double unit : {1e6, 1e11}) {
        OpenedDocument document(
            PdfBuilder().page(PdfPage{.lines = {QStringLiteral("far and wide")}, .userUnit = unit}).build());
        const std::vector<std::uint8_t> message = encoded(1, document.document().placedText({0}));
        EXPECT_TRUE(decodedReply(MessageKind::TextPlaced, std::span(message).subspan(kHeaderBytes))) << unit;
    }
}

TEST(PlacedText, IsCutWithItsBoxes)
{
    QByteArray drawing;
    const QByteArray show = " Td (" + QByteArray(1000, 'x') + ") Tj ET\n";
    for (int i = 0; i < 1100; ++i)
        drawing += "BT /F1 1 Tf 72 " + QByteArray::number(5000 - i) + show;
    const PlacedTextReply reply = placedTextOf({.mediaBox = PdfBox{0, 0, 5000, 6000}, .drawing = drawing});
    EXPECT_LE(reply.text.size(), kMaxPageTextBytes);
    EXPECT_EQ(reply.boxes.back(), PageBox());
}

TEST(PlacedText, IsSoundWhateverThePageDraws)
{
    const QByteArray huge(38, '9'); // as large as numbers get
    const QList<QByteArray> drawings = {
        "BT /F1 " + huge + " Tf 0 0 Td (x) Tj ET",
        "BT /F1 12 Tf " + huge + " 0 0 " + huge + " 0 0 Tm (xyz) Tj ET",
        "BT /F1 12 Tf 1 0 0 1 " + huge + " 0 Tm (xyz) Tj ET",
        "BT /F1 12 Tf 0 0 0 0 100 100 Tm (xyz) Tj ET",
        "BT /F1 -12 Tf 100 100 Td (xyz) Tj ET",
        "BT /F1 12 Tf " + huge + " Tz 100 100 Td (xyz) Tj ET",
        "BT /F1 12 Tf " + huge + " Tc 100 100 Td (xyz) Tj ET",
    };
    for (const QByteArray &drawing : drawings) {
        OpenedDocument document(PdfBuilder().page(PdfPage{.drawing = drawing}).build());
        const Reply reply = document.document().placedText({0});
        const std::vector<std::uint8_t> message = encoded(1, reply);
        if (std::holds_alternative<PlacedTextReply>(reply)) {
            EXPECT_TRUE(decodedReply(MessageKind::TextPlaced, std::span(message).subspan(kHeaderBytes)))
                << drawing.toStdString();
        }
    }
}
