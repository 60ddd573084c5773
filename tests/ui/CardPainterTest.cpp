#include "ui/CardPainter.h"
#include "app/LibraryViewModel.h"
#include "store/ReservedTags.h"
#include "ui/GridFixture.h"

#include <QPainter>

namespace
{
constexpr int kMargin = 20;

QPalette darkPalette()
{
    return {QColor(45, 48, 52), QColor(27, 30, 32)};
}

/// One card, painted alone on the palette's base.
class CardPainterTest : public ::testing::Test, protected GridFixture
{
protected:
    QImage painted(CardPainter::State state = {})
    {
        CardPainter look(CardStyle(QApplication::font(), kind), palette, scale);
        const QSize size(CardStyle::kWidth + 2 * kMargin, look.style().height() + 2 * kMargin);
        QImage image(size * scale, QImage::Format_RGB32);
        image.setDevicePixelRatio(scale);
        image.fill(palette.color(QPalette::Base));
        QPainter painter(&image);
        const PaperGridItem item{.vm = vm(),
                                 .paper = card.paper,
                                 .passage = card.passage,
                                 .isSelected = isSelected,
                                 .onSelect = {},
                                 .onDoubleClick = {},
                                 .image = cover};
        const CardText text(card, QStringLiteral("found"), look.style(), palette);
        look.paint(painter, QRectF(kMargin, kMargin, CardStyle::kWidth, look.style().height()), item, &text,
                   state);
        return image;
    }
    QColor at(const QImage &image, double x, double y) const
    {
        return image.pixelColor(int((kMargin + x) * scale), int((kMargin + y) * scale));
    }
    QColor base() const { return palette.color(QPalette::Base); }
    void setCover(QSize size, QColor colour)
    {
        QPixmap picture(size);
        picture.fill(colour);
        cover = picture;
    }
    /// The part of a channel that `colour` has come from `from` towards `to`.
    static double mixed(const QColor &colour, const QColor &from, const QColor &to)
    {
        return double(colour.red() - from.red()) / (to.red() - from.red());
    }

    CardKind kind = CardKind::Paper;
    QPalette palette = QApplication::style()->standardPalette();
    double scale = 1;
    PaperCard card;
    bool isSelected = false;
    std::optional<QPixmap> cover;
};
} // namespace

TEST_F(CardPainterTest, ShowsARoundedRectangleAndASymbolInPlaceOfACover)
{
    const QImage image = painted();
    EXPECT_EQ(at(image, 0, 0), base()) << "the corner is round";
    const QColor secondary(palette.color(QPalette::PlaceholderText).rgb());
    EXPECT_NEAR(mixed(at(image, 20, 20), base(), secondary), 0.1, 0.02);
    bool hasSymbol = false;
    for (int y = 88; y < 136; ++y)
        for (int x = 60; x < 108; ++x)
            hasSymbol = hasSymbol || at(image, x, y) != at(image, 20, 20);
    EXPECT_TRUE(hasSymbol);
}

TEST_F(CardPainterTest, ShowsThePlaceholderInADarkPaletteToo)
{
    palette = darkPalette();
    const QColor secondary(palette.color(QPalette::PlaceholderText).rgb());
    EXPECT_NEAR(mixed(at(painted(), 20, 20), base(), secondary), 0.1, 0.02);
}

TEST_F(CardPainterTest, FitsACoverIntoTheBox)
{
    setCover({168, 100}, Qt::green);
    const QImage image = painted();
    EXPECT_EQ(at(image, 84, CardStyle::kCoverHeight - 50), QColor(Qt::green));
    EXPECT_EQ(at(image, 84, 100), base()) << "a wide cover stands on the box's foot";
}

TEST_F(CardPainterTest, CentresANarrowCover)
{
    setCover({100, 224}, Qt::green);
    const QImage image = painted();
    EXPECT_EQ(at(image, 84, 112), QColor(Qt::green));
    EXPECT_EQ(at(image, 20, 112), base());
    EXPECT_EQ(at(image, 148, 112), base());
}

TEST_F(CardPainterTest, AsksForCoversInTheScreensOwnPixels)
{
    const CardStyle style(QApplication::font(), CardKind::Paper);
    EXPECT_EQ(CardPainter(style, palette, 1).coverBox(), QSize(168, 224));
    EXPECT_EQ(CardPainter(style, palette, 2).coverBox(), QSize(336, 448));
    EXPECT_EQ(CardPainter(style, palette, 1.25).coverBox(), QSize(210, 280));
}

TEST_F(CardPainterTest, KeepsEveryPixelOfACoverOnAFineScreen)
{
    scale = 2;
    QImage stripes(336, 448, QImage::Format_RGB32);
    for (int y = 0; y < stripes.height(); ++y)
        for (int x = 0; x < stripes.width(); ++x)
            stripes.setPixelColor(x, y, x % 2 ? Qt::black : Qt::white);
    cover = QPixmap::fromImage(stripes);
    const QImage image = painted();
    EXPECT_EQ(image.copy(2 * kMargin + 20, 2 * kMargin + 20, 200, 200), stripes.copy(20, 20, 200, 200));
}

TEST_F(CardPainterTest, DrawsTheRingOfASelectedCardInTheAccentColour)
{
    palette.setColor(QPalette::Highlight, QColor(200, 30, 60));
    isSelected = true;
    const QImage image = painted({.hasFocus = true});
    const double side = 1 - CardPainter::kRingReach;
    EXPECT_EQ(at(image, side, 100), QColor(200, 30, 60));
    EXPECT_NE(at(image, -3, 100), base()) << "a tint inside the ring";
    isSelected = false;
    EXPECT_EQ(at(painted(), side, 100), base());
}

TEST_F(CardPainterTest, TellsHoverFromRest)
{
    EXPECT_NE(at(painted({.isHovered = true}), -3, 100), base());
    EXPECT_EQ(at(painted(), -3, 100), base());
}

TEST_F(CardPainterTest, ShowsTheKeyboardOnACardThatIsNotSelected)
{
    EXPECT_NE(painted({.hasFocus = true}), painted());
}

TEST_F(CardPainterTest, MarksAPaperThatIsBeingRead)
{
    palette.setColor(QPalette::Highlight, QColor(200, 30, 60));
    card.paper.tags = {QLatin1String(kCurrentlyReadingTag)};
    EXPECT_EQ(at(painted(), CardStyle::kWidth - 20, 8), QColor(200, 30, 60));
}

TEST_F(CardPainterTest, MarksAPaperWhoseFileIsMissing)
{
    setCover({168, 224}, Qt::green);
    const QImage there = painted();
    const QImage gone = painted({.isFileMissing = true});
    EXPECT_EQ(at(there, 150, 200), QColor(Qt::green));
    EXPECT_NE(at(gone, 150, 200), QColor(Qt::green));
}

TEST_F(CardPainterTest, MakesRoomForPassagesInResultsOnly)
{
    const CardStyle plain(QApplication::font(), CardKind::Paper);
    const CardStyle result(QApplication::font(), CardKind::SearchResult);
    EXPECT_EQ(result.height() - plain.height(), 5 * result.smallLine + 2 * CardStyle::kTextGap);
}

TEST_F(CardPainterTest, TintsTheMatchedWordsOfAPassage)
{
    kind = CardKind::SearchResult;
    palette.setColor(QPalette::Highlight, QColor(0, 0, 255));
    card.paper.title = QStringLiteral("T");
    card.passage = QStringLiteral("what was ...found... here");
    card.passagePage = 1;
    const auto tinted = [this] {
        const QImage image = painted();
        int count = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                count += image.pixelColor(x, y) == QColor(191, 191, 255);
        return count;
    };
    EXPECT_GT(tinted(), 100);
    card.passage = QStringLiteral("nothing of note here");
    EXPECT_EQ(tinted(), 0);
}
