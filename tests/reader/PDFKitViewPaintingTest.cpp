#include "reader/ReaderViewFixture.h"

#include "pdf/PDFDocument.h"
#include "reader/HitMarkStrip.h"

namespace
{
using Kind = PageJob::Kind;
using PDFKitViewPaintingTest = ReaderViewTest;
} // namespace

TEST_F(PDFKitViewPaintingTest, ShowsOnlyTheBackdropUntilAnySizeIsKnown)
{
    view.setPages(pages.source());
    const QImage image = picture();
    EXPECT_EQ(image.pixelColor(300, 250), image.pixelColor(2, 2));
}

TEST_F(PDFKitViewPaintingTest, ShowsPaperUntilThePictureIsThere)
{
    pages.color = Qt::green;
    view.setPages(pages.source());
    pages.answerNext();
    EXPECT_EQ(picture().pixelColor(300, 250), QColor(Qt::white));
    pages.answerAll();
    EXPECT_EQ(picture().pixelColor(300, 250), QColor(Qt::green));
}

TEST_F(PDFKitViewPaintingTest, ShowsDarkPaperInDarkMode)
{
    view.setDarkMode(true);
    view.setPages(pages.source());
    pages.answerNext();
    const QImage image = picture();
    EXPECT_EQ(image.pixelColor(300, 250), QColor(Qt::black));
    EXPECT_LT(image.pixelColor(2, 2).lightness(), 100);
}

TEST_F(PDFKitViewPaintingTest, ScalesThePictureItHasUntilTheSharpOneIsThere)
{
    pages.color = Qt::green;
    showPages();
    pages.color = Qt::blue;
    view.zoomBy(2, {312, 250});
    EXPECT_EQ(picture().pixelColor(300, 250), QColor(Qt::green));
    pages.answerAll();
    EXPECT_EQ(picture().pixelColor(300, 250), QColor(Qt::blue));
}

TEST_F(PDFKitViewPaintingTest, ShowsSharpTilesOverTheScaledPageAsTheyCome)
{
    pages.color = Qt::green;
    showPages();
    pages.color = Qt::blue;
    view.zoomBy(8, {312, 250});
    resizeViewport({1200, 1100});
    ASSERT_GE(pages.wanted(Kind::Picture).size(), 2u);
    const QRect first = pages.wanted(Kind::Picture).front().tile.part;
    pages.answerNext();
    const QImage image = picture();
    const QPointF corner = viewpoint().pageRect(0).topLeft();
    const QRect there = QRect(corner.toPoint() + first.topLeft(), first.size()) & image.rect();
    ASSERT_FALSE(there.isEmpty());
    EXPECT_EQ(image.pixelColor(there.center()), QColor(Qt::blue));
    EXPECT_EQ(image.pixelColor(there.bottomLeft() + QPoint(5, 20)), QColor(Qt::green));
}

TEST_F(PDFKitViewPaintingTest, PaintsPicturesPixelByPixel)
{
    class Striped : public PageSource
    {
    public:
        bool isOpen() const override { return true; }
        qint64 pageCount() const override { return 1; }
        void ask(const PlannedJob &planned, std::stop_token, Answered answered) override
        {
            FakePages pages(1);
            Result<PageAnswer> answer = pages.answerTo(planned.job);
            if (planned.job.kind == Kind::Picture) {
                auto &image = std::get<QImage>(*answer);
                for (int y = 0; y < image.height(); ++y)
                    for (int x = 0; x < image.width(); ++x)
                        image.setPixel(x, y, (x + y) % 2 ? 0xff000000 : 0xffffffff);
            }
            answers.push_back([answered = std::move(answered), answer] { answered(answer); });
        }
        std::vector<std::function<void()>> answers;
    };
    auto owned = std::make_unique<Striped>();
    Striped &source = *owned;
    view.setPages(std::move(owned));
    for (size_t i = 0; i < source.answers.size(); ++i)
        source.answers[i]();
    const QImage image = picture();
    const QPoint corner = viewpoint().pageRect(0).topLeft().toPoint();
    for (const QPoint &pixel : {QPoint(0, 0), QPoint(1, 0), QPoint(301, 200), QPoint(302, 200)}) {
        const QColor expected = (pixel.x() + pixel.y()) % 2 ? Qt::black : Qt::white;
        EXPECT_EQ(image.pixelColor(corner + pixel), expected);
    }
}

TEST_F(PDFKitViewPaintingTest, SaysThatAPageCannotBeShown)
{
    pages.failures[{Kind::Picture, 0}] = pdfError(PDFErrorCode::PageUnavailable);
    view.setPages(pages.source());
    pages.answerNext();
    const QImage blank = picture();
    pages.answerAll();
    EXPECT_NE(picture(), blank);
    EXPECT_TRUE(pages.questions.empty());
}

TEST_F(PDFKitViewPaintingTest, SaysSoWhereNoPageHasASize)
{
    pages.failures[{Kind::Sizes, 0}] = pdfError(PDFErrorCode::PageUnavailable);
    for (qint64 page = 0; page < pages.count; ++page)
        pages.failures[{Kind::Picture, page}] = pdfError(PDFErrorCode::PageUnavailable);
    view.setPages(pages.source());
    const QImage backdrop = picture();
    pages.answerNext();
    const QImage blank = picture();
    EXPECT_NE(blank, backdrop);
    pages.answerAll();
    EXPECT_NE(picture(), blank);
    EXPECT_TRUE(view.isSharp()) << "there is nothing more to come";
    EXPECT_TRUE(pages.questions.empty());
}

TEST_F(PDFKitViewPaintingTest, DrawsAShadowAroundThePage)
{
    showPages();
    const QImage image = picture();
    const QPoint corner = viewpoint().pageRect(0).topLeft().toPoint();
    const int backdrop = image.pixelColor(1, 200).lightness();
    EXPECT_LT(image.pixelColor(corner.x() - 1, 200).lightness(), backdrop);
    EXPECT_EQ(image.pixelColor(corner.x(), 200), QColor(Qt::white));
}

TEST_F(PDFKitViewPaintingTest, MarksHitsBesideTheScrollBar)
{
    showPages();
    auto *strip = view.findChild<HitMarkStrip *>();
    ASSERT_NE(strip, nullptr);
    EXPECT_FALSE(strip->isVisible());
    view.setHitMarks({0, 4, 9}, 1);
    EXPECT_TRUE(strip->isVisible());
    EXPECT_EQ(strip->geometry().right(), view.viewport()->geometry().right());
    EXPECT_EQ(view.viewport()->width(), kWidth) << "pages stay as they are when a search has hits";
    EXPECT_LT(strip->markOf(0).bottom(), strip->markOf(4).top());
    const QImage image = strip->grab().toImage();
    EXPECT_NE(image.pixelColor(strip->markOf(4).center()), image.pixelColor(4, strip->height() / 4));

    QSignalSpy activated(&view, &PDFKitView::hitMarkActivated);
    QTest::mouseClick(strip, Qt::LeftButton, {}, strip->markOf(9).center());
    ASSERT_EQ(activated.count(), 1);
    EXPECT_EQ(activated.first().first().toInt(), 2);
    view.setHitMarks({}, -1);
    EXPECT_FALSE(strip->isVisible());
}

TEST_F(PDFKitViewPaintingTest, MarksTheWordsOfAPassageInOneStrokeALine)
{
    const QColor paper(Qt::white);
    showPages();
    const PDFPageText text = placedLines({QStringLiteral("rarer words                    beyond")});
    PDFSelection passage(0, text, {0, 5});
    passage.add(PDFSelection(0, text, {6, 11}));
    passage.add(PDFSelection(0, text, {31, 37}));
    view.setCurrentSelection(passage, PDFView::Animate::No);
    const QImage image = picture();
    const auto colorAt = [&](int character) {
        return image.pixelColor(pointOf(0, {55 + 10.0 * character, 110}));
    };
    EXPECT_NE(colorAt(0), paper);
    EXPECT_EQ(colorAt(5), colorAt(0)) << "between two words";
    EXPECT_EQ(colorAt(20), paper) << "far from both";
    EXPECT_NE(colorAt(31), paper);
}
