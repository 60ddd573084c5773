#include "OpenedDocument.h"

#include "support/PdfBuilder.h"

namespace
{
using Pixel = std::array<int, 3>;
constexpr Pixel kWhite = {255, 255, 255};
constexpr Pixel kRed = {255, 0, 0};

PictureReply thumbnailOf(const PdfPage &page, std::uint32_t maxWidth = 300, std::uint32_t maxHeight = 400)
{
    return OpenedDocument(PdfBuilder().page(page).build()).thumbnail(maxWidth, maxHeight);
}

std::pair<std::uint32_t, std::uint32_t> sizeOf(const PictureReply &picture)
{
    return {picture.width, picture.height};
}

Pixel pixelAt(const PictureReply &picture, std::uint32_t x, std::uint32_t y)
{
    const std::uint8_t *pixel = picture.pixels.data() + (std::size_t(y) * picture.width + x) * 3;
    return {pixel[0], pixel[1], pixel[2]};
}

std::pair<std::uint32_t, std::uint32_t> size(std::uint32_t width, std::uint32_t height)
{
    return {width, height};
}
} // namespace

TEST(Thumbnail, FillsTheBoxInOneDirectionAndKeepsProportions)
{
    EXPECT_EQ(sizeOf(thumbnailOf({.mediaBox = PdfBox{0, 0, 600, 800}})), size(300, 400));
    EXPECT_EQ(sizeOf(thumbnailOf({.mediaBox = PdfBox{0, 0, 800, 400}})), size(300, 150));
    EXPECT_EQ(sizeOf(thumbnailOf({.mediaBox = PdfBox{0, 0, 100, 800}})), size(50, 400));
}

TEST(Thumbnail, EnlargesSmallPages)
{
    EXPECT_EQ(sizeOf(thumbnailOf({.mediaBox = PdfBox{0, 0, 30, 40}})), size(300, 400));
}

TEST(Thumbnail, IsWhiteWithoutContent)
{
    const PictureReply picture = thumbnailOf({.mediaBox = PdfBox{0, 0, 600, 800}});
    ASSERT_EQ(picture.pixels.size(), 300u * 400u * 3u);
    EXPECT_EQ(picture.pixels, std::vector<std::uint8_t>(picture.pixels.size(), 255));
}

TEST(Thumbnail, ShowsTheArtBoxOnly)
{
    const PictureReply picture = thumbnailOf({.mediaBox = PdfBox{0, 0, 600, 800},
                                              .cropBox = PdfBox{0, 0, 500, 700},
                                              .artBox = PdfBox{100, 100, 200, 200},
                                              .drawing = "1 0 0 rg 100 100 50 100 re f"});
    EXPECT_EQ(sizeOf(picture), size(300, 300));
    EXPECT_EQ(pixelAt(picture, 10, 150), kRed);
    EXPECT_EQ(pixelAt(picture, 290, 150), kWhite);
}

TEST(Thumbnail, FallsBackToTheCropBox)
{
    EXPECT_EQ(sizeOf(thumbnailOf({.mediaBox = PdfBox{0, 0, 600, 800}, .cropBox = PdfBox{0, 0, 200, 100}})),
              size(300, 150));
    EXPECT_EQ(sizeOf(thumbnailOf({.mediaBox = PdfBox{0, 0, 600, 800}, .artBox = PdfBox{900, 900, 990, 990}})),
              size(300, 400));
}

TEST(Thumbnail, CutsTheArtBoxAtTheMediaBox)
{
    EXPECT_EQ(sizeOf(thumbnailOf({.mediaBox = PdfBox{0, 0, 200, 200}, .artBox = PdfBox{100, 0, 900, 200}})),
              size(200, 400));
}

TEST(Thumbnail, TurnsWithThePage)
{
    // The lower left quarter is red; after a quarter turn clockwise it is the upper left one.
    const PictureReply picture = thumbnailOf({.mediaBox = PdfBox{0, 0, 600, 800},
                                              .artBox = PdfBox{0, 0, 400, 200},
                                              .rotation = 90,
                                              .drawing = "1 0 0 rg 0 0 200 100 re f"});
    EXPECT_EQ(sizeOf(picture), size(200, 400));
    EXPECT_EQ(pixelAt(picture, 10, 10), kRed);
    EXPECT_EQ(pixelAt(picture, 190, 10), kWhite);
    EXPECT_EQ(pixelAt(picture, 10, 390), kWhite);
}

TEST(Thumbnail, DoesNotDependOnTheUserUnit)
{
    EXPECT_EQ(sizeOf(thumbnailOf(
                  {.mediaBox = PdfBox{0, 0, 60, 80}, .artBox = PdfBox{0, 0, 30, 20}, .userUnit = 10})),
              size(300, 200));
}

TEST(Thumbnail, HasAtLeastOnePixelEachWay)
{
    EXPECT_EQ(sizeOf(thumbnailOf({.mediaBox = PdfBox{0, 0, 1'000'000, 1}})), size(300, 1));
    EXPECT_EQ(sizeOf(thumbnailOf({.mediaBox = PdfBox{0, 0, 1, 14400}})), size(1, 400));
    EXPECT_EQ(sizeOf(thumbnailOf({.mediaBox = PdfBox{0, 0, 600, 800}}, 1, 1)), size(1, 1));
}
