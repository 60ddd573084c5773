#include "OpenedDocument.h"

#include "support/PdfBuilder.h"

namespace
{
using Pixel = std::array<int, 3>; // red, green, blue
constexpr Pixel kWhite = {255, 255, 255};
constexpr Pixel kBlack = {0, 0, 0};
constexpr Pixel kRed = {255, 0, 0};

/// A page of 100 by 200 points whose upper left quarter is red.
const PdfPage kQuarter = {.mediaBox = PdfBox{0, 0, 100, 200}, .drawing = "1 0 0 rg 0 100 50 100 re f"};

/// A picture of a green and a blue pixel, 50 by 50 points.
constexpr char kPicture[] = "q 50 0 0 50 0 0 cm BI /W 2 /H 1 /CS /RGB /BPC 8 /F /AHx ID 00ff000000ff> EI Q ";
/// Stripes of one bit a pixel: black and white.
constexpr char kScan[] = "q 50 0 0 50 0 0 cm BI /W 2 /H 1 /CS /G /BPC 1 /F /AHx ID 40> EI Q ";

class Drawn
{
public:
    Drawn(const PdfPage &page, const DrawRequest &request)
        : m_request(request)
        , m_pixels(std::size_t(request.width) * request.height * 4, 0x55)
    {
        OpenedDocument document(PdfBuilder().page(page).build());
        EXPECT_EQ(document.document().draw(request, m_pixels.data()), Reply(DrawnReply{}));
    }

    Pixel at(std::uint32_t x, std::uint32_t y) const
    {
        const unsigned char *pixel = m_pixels.data() + (std::size_t(y) * m_request.width + x) * 4;
        EXPECT_EQ(pixel[3], 255) << "paper is opaque";
        return {pixel[2], pixel[1], pixel[0]};
    }

private:
    DrawRequest m_request;
    std::vector<unsigned char> m_pixels;
};

/// The largest one of a colour. Slanted edges are smoothed a little differently when the part begins
/// elsewhere.
int difference(const Pixel &a, const Pixel &b)
{
    return std::max({std::abs(a[0] - b[0]), std::abs(a[1] - b[1]), std::abs(a[2] - b[2])});
}

Drawn darkened(const QByteArray &drawing)
{
    return Drawn({.mediaBox = PdfBox{0, 0, 100, 100}, .drawing = drawing},
                 {.isDark = 1, .width = 100, .height = 100});
}
} // namespace

TEST(Drawing, ShowsThePageAtItsScale)
{
    const Drawn page(kQuarter, {.scale = 2, .width = 200, .height = 400});
    EXPECT_EQ(page.at(0, 0), kRed);
    EXPECT_EQ(page.at(98, 198), kRed);
    EXPECT_EQ(page.at(102, 198), kWhite);
    EXPECT_EQ(page.at(98, 202), kWhite);
}

TEST(Drawing, ShowsThePartThatIsAskedFor)
{
    const Drawn part(kQuarter, {.scale = 2, .left = 90, .top = 190, .width = 20, .height = 20});
    EXPECT_EQ(part.at(0, 0), kRed);
    EXPECT_EQ(part.at(8, 8), kRed);
    EXPECT_EQ(part.at(12, 8), kWhite);
    EXPECT_EQ(part.at(8, 12), kWhite);
}

TEST(Drawing, PartsFitTogether)
{
    const PdfPage page = {.mediaBox = PdfBox{0, 0, 100, 100},
                          .drawing = "0 0 1 rg 13.3 17.7 61.1 59.9 re f 1 0 0 RG 3 w 0 0 m 100 100 l S"};
    const Drawn whole(page, {.scale = 1.37f, .width = 137, .height = 137});
    const Drawn part(page, {.scale = 1.37f, .left = 41, .top = 53, .width = 60, .height = 60});
    for (std::uint32_t y = 0; y < 60; ++y) {
        for (std::uint32_t x = 0; x < 60; ++x)
            ASSERT_LE(difference(part.at(x, y), whole.at(x + 41, y + 53)), 32) << x << ", " << y;
    }
}

TEST(Drawing, IsPaperBeyondThePage)
{
    const Drawn page(kQuarter, {.left = 200, .top = 300, .width = 30, .height = 30});
    EXPECT_EQ(page.at(0, 0), kWhite);
    EXPECT_EQ(page.at(29, 29), kWhite);
}

TEST(Drawing, TurnsClockwise)
{
    EXPECT_EQ(Drawn(kQuarter, {.turns = 1, .width = 200, .height = 100}).at(190, 10), kRed);
    EXPECT_EQ(Drawn(kQuarter, {.turns = 1, .width = 200, .height = 100}).at(10, 10), kWhite);
    EXPECT_EQ(Drawn(kQuarter, {.turns = 2, .width = 100, .height = 200}).at(90, 190), kRed);
    EXPECT_EQ(Drawn(kQuarter, {.turns = 3, .width = 200, .height = 100}).at(10, 90), kRed);
}

TEST(Drawing, TurnsFurtherThanThePageIsTurned)
{
    PdfPage page = kQuarter;
    page.rotation = 270;
    EXPECT_EQ(Drawn(page, {.turns = 1, .width = 100, .height = 200}).at(10, 10), kRed);
}

TEST(Drawing, BeginsWhereThePageIsCropped)
{
    PdfPage page = kQuarter;
    page.cropBox = PdfBox{40, 0, 100, 110};
    const Drawn drawn(page, {.width = 60, .height = 110});
    EXPECT_EQ(drawn.at(5, 5), kRed);
    EXPECT_EQ(drawn.at(15, 5), kWhite);
    EXPECT_EQ(drawn.at(5, 15), kWhite);
}

TEST(Drawing, IsOpaqueUnderTransparentLayers)
{
    const PdfPage page = {.mediaBox = PdfBox{0, 0, 100, 100},
                          .drawing = "/T gs 1 0 0 rg 0 0 100 100 re f 0 1 0 rg 0 0 50 50 re f",
                          .entries = "/Group<</S/Transparency/CS/DeviceRGB/I true>>"
                                     "/Resources<</ExtGState<</T<</ca 0.37/BM/Multiply>>>>>>"};
    const Drawn drawn(page, {.width = 100, .height = 100});
    for (std::uint32_t i = 0; i < 100; ++i)
        (void)drawn.at(i, i);
}

TEST(Drawing, InTheDarkTurnsPaperBlackAndInkWhite)
{
    const Drawn page = darkened("0 g 0 0 50 100 re f");
    EXPECT_EQ(page.at(10, 50), kWhite);
    EXPECT_EQ(page.at(90, 50), kBlack);
}

TEST(Drawing, InTheDarkKeepsHues)
{
    const Pixel blue = darkened("0 0 1 rg 0 0 100 100 re f").at(50, 50);
    EXPECT_EQ(blue[2], 255);
    EXPECT_GT(blue[0], 180) << "light enough to read on black";
    EXPECT_EQ(blue[0], blue[1]);
    const Pixel paleYellow = darkened("1 1 0.8 rg 0 0 100 100 re f").at(50, 50);
    EXPECT_LT(paleYellow[0], 64);
    EXPECT_GE(paleYellow[0], paleYellow[2]);
}

TEST(Drawing, InTheDarkLeavesPicturesAlone)
{
    const Drawn page = darkened(kPicture);
    EXPECT_EQ(page.at(10, 75), (Pixel{0, 255, 0}));
    EXPECT_EQ(page.at(40, 75), (Pixel{0, 0, 255}));
    EXPECT_EQ(page.at(60, 75), kBlack);
    EXPECT_EQ(page.at(25, 40), kBlack);
}

TEST(Drawing, InTheDarkLeavesOnlyTheSeenPartOfAPictureAlone)
{
    const Drawn page = darkened("0 0 20 100 re W n " + QByteArray(kPicture));
    EXPECT_EQ(page.at(10, 75), (Pixel{0, 255, 0}));
    EXPECT_EQ(page.at(40, 75), kBlack);
}

TEST(Drawing, InTheDarkPicturesMayOverlap)
{
    const QByteArray shifted = "q 1 0 0 1 25 10 cm " + QByteArray(kPicture) + " Q";
    const Drawn page = darkened(kPicture + shifted);
    EXPECT_EQ(page.at(10, 75), (Pixel{0, 255, 0}));
    EXPECT_EQ(page.at(70, 60), (Pixel{0, 0, 255}));
    EXPECT_EQ(page.at(80, 60), kBlack);
    EXPECT_EQ(page.at(70, 95), kBlack);
}

TEST(Drawing, InTheDarkScannedPrintIsNoPicture)
{
    const Drawn page = darkened(kScan);
    EXPECT_EQ(page.at(10, 75), kWhite);
    EXPECT_EQ(page.at(40, 75), kBlack);
}

TEST(Drawing, FailsForAPageThatCannotBeHadOrHasNoSize)
{
    for (const PdfPage &page : {PdfPage{.isBroken = true}, PdfPage{.userUnit = 1'000'000}}) {
        OpenedDocument document(PdfBuilder().page(page).build());
        std::array<unsigned char, 4> pixel = {};
        const Reply reply = document.document().draw({.width = 1, .height = 1}, pixel.data());
        EXPECT_EQ(std::get<FailedReply>(reply).failure, Failure::PageUnavailable);
    }
}
