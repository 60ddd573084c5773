#include "OpenedDocument.h"

#include "pdf/protocol/Limits.h"
#include "support/PdfBuilder.h"

namespace
{
PageShape shapeOf(const PdfPage &page)
{
    return OpenedDocument(PdfBuilder().page(page).build()).shape();
}

std::pair<float, float> sizeOf(const PageShape &shape)
{
    return {shape.width, shape.height};
}

std::pair<float, float> size(float width, float height)
{
    return {width, height};
}
} // namespace

TEST(PageShapes, GiveTheSizeInPoints)
{
    const PageShape shape = shapeOf({.mediaBox = PdfBox{0, 0, 600, 800}});
    EXPECT_EQ(sizeOf(shape), size(600, 800));
    EXPECT_EQ(shape.turns, 0u);
}

TEST(PageShapes, AreCropped)
{
    const PageShape shape =
        shapeOf({.mediaBox = PdfBox{0, 0, 600, 800}, .cropBox = PdfBox{100, 200, 500, 700}});
    EXPECT_EQ(sizeOf(shape), size(400, 500));
    EXPECT_EQ(shape.media, (PageBox{-100, -100, 500, 700}));
}

TEST(PageShapes, AreTurnedWithThePage)
{
    const PdfPage page = {.mediaBox = PdfBox{0, 0, 600, 800}, .artBox = PdfBox{10, 20, 110, 220}};
    PdfPage turned = page;
    turned.rotation = 90;
    EXPECT_EQ(sizeOf(shapeOf(turned)), size(800, 600));
    EXPECT_EQ(shapeOf(turned).turns, 1u);
    EXPECT_EQ(shapeOf(page).art, (PageBox{10, 580, 110, 780}));
    EXPECT_EQ(shapeOf(turned).art, (PageBox{20, 10, 220, 110}));
    turned.rotation = -90;
    EXPECT_EQ(shapeOf(turned).turns, 3u);
    turned.rotation = 540;
    EXPECT_EQ(shapeOf(turned).turns, 2u);
}

TEST(PageShapes, ObeyTheUserUnit)
{
    EXPECT_EQ(sizeOf(shapeOf({.mediaBox = PdfBox{0, 0, 60, 80}, .userUnit = 10})), size(600, 800));
}

TEST(PageShapes, BoxesThatThePageLacksAreWhatIsShown)
{
    const PageShape shape =
        shapeOf({.mediaBox = PdfBox{0, 0, 600, 800}, .cropBox = PdfBox{100, 200, 500, 700}});
    const PageBox shown = {0, 0, 400, 500};
    EXPECT_EQ(shape.bleed, shown);
    EXPECT_EQ(shape.trim, shown);
    EXPECT_EQ(shape.art, shown);
}

TEST(PageShapes, AreSoundWhateverTheBoxesClaim)
{
    const QByteArray huge(38, '9'); // as large as numbers get
    const QList<QByteArray> boxes = {"[0 0 0 0]", "[-" + huge + " -" + huge + ' ' + huge + ' ' + huge + ']',
                                     "[(a) /b null]", "[5 5 5 900]", "[]"};
    for (const QByteArray &box : boxes) {
        const QByteArray entries = "/MediaBox" + box + "/CropBox" + box + "/TrimBox" + box;
        OpenedDocument document(PdfBuilder().page(PdfPage{.entries = entries}).page(QStringList()).build());
        const std::vector<std::uint8_t> message = encoded(1, Reply(document.shapes(0, 2)));
        EXPECT_TRUE(decodedReply(MessageKind::ShapesTold, std::span(message).subspan(kHeaderBytes)))
            << box.toStdString();
        EXPECT_TRUE(document.shapes(0, 2).shapes.at(1)) << box.toStdString();
    }
}

TEST(PageShapes, APageThatCannotBeHadIsMissingAlone)
{
    OpenedDocument document(PdfBuilder()
                                .page(PdfPage{.mediaBox = PdfBox{0, 0, 100, 100}})
                                .page(PdfPage{.isBroken = true})
                                .page(PdfPage{.mediaBox = PdfBox{0, 0, 300, 300}})
                                .build());
    const ShapesReply reply = document.shapes(0, 3);
    ASSERT_EQ(reply.shapes.size(), 3u);
    EXPECT_EQ(reply.shapes[0]->width, 100);
    EXPECT_EQ(reply.shapes[2]->width, 300);
}

TEST(PageShapes, OfManyPagesComeInTheirOrder)
{
    PdfBuilder builder;
    for (int i = 0; i < 50; ++i)
        builder.page(PdfPage{.mediaBox = PdfBox{0, 0, 100.0 + i, 100}});
    OpenedDocument document(builder.build());
    const ShapesReply reply = document.shapes(10, 20);
    ASSERT_EQ(reply.shapes.size(), 20u);
    for (std::size_t i = 0; i < reply.shapes.size(); ++i)
        EXPECT_EQ(reply.shapes[i]->width, 110.0f + float(i));
}

TEST(PageShapes, FollowATreeOfSeveralLevels)
{
    // Two nodes of two pages each, one of which hands its box down.
    const QByteArray page = "<</Type/Page/Parent 100001 0 R>>";
    OpenedDocument document(PdfBuilder()
                                .catalogue("/Pages 100000 0 R")
                                .object(100'000, "<</Type/Pages/Count 4/Kids[100001 0 R 100002 0 R]>>")
                                .object(100'001, "<</Type/Pages/Parent 100000 0 R/Count 2/MediaBox[0 0 111 9]"
                                                 "/Kids[100003 0 R 100004 0 R]>>")
                                .object(100'002, "<</Type/Pages/Parent 100000 0 R/Count 2"
                                                 "/Kids[100005 0 R 100006 0 R]>>")
                                .object(100'003, page)
                                .object(100'004, page)
                                .object(100'005, "<</Type/Page/Parent 100002 0 R/MediaBox[0 0 333 9]>>")
                                .object(100'006, "<</Type/Page/Parent 100002 0 R/MediaBox[0 0 444 9]>>")
                                .build());
    const ShapesReply reply = document.shapes(0, 4);
    ASSERT_EQ(reply.shapes.size(), 4u);
    EXPECT_EQ(reply.shapes[0]->width, 111);
    EXPECT_EQ(reply.shapes[1]->width, 111);
    EXPECT_EQ(reply.shapes[2]->width, 333);
    EXPECT_EQ(reply.shapes[3]->width, 444);
}

TEST(PageShapes, EndWithThePages)
{
    OpenedDocument document(PdfBuilder().page(QStringList()).page(QStringList()).build());
    EXPECT_EQ(document.shapes(1, 1000).shapes.size(), 1u);
    EXPECT_EQ(document.shapes(2, 1000).shapes.size(), 0u);
    EXPECT_EQ(document.shapes(kMaxPageCount - 1, 1000).shapes.size(), 0u);
}
