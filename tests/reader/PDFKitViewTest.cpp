#include "reader/ReaderViewFixture.h"

#include "pdf/PDFDocument.h"

#include <gmock/gmock.h>

namespace
{
using Kind = PageJob::Kind;
using PDFKitViewTest = ReaderViewTest;
} // namespace

TEST_F(PDFKitViewTest, IsEmptyWithoutADocument)
{
    EXPECT_EQ(view.currentPageIndex(), std::nullopt);
    EXPECT_EQ(view.currentSelection(), std::nullopt);
    view.goToPage(3);
    view.zoomIn();
    view.scaleToPage();
    view.selectAll();
    view.copySelection();
    view.goBack();
    EXPECT_FALSE(view.canGoBack());
    EXPECT_FALSE(picture().isNull());
}

TEST_F(PDFKitViewTest, FitsTheFirstPageToItsWidth)
{
    showPages();
    ASSERT_EQ(view.viewport()->size(), QSize(kWidth, kHeight));
    EXPECT_EQ(viewpoint().pageRect(0), QRectF(12, 12, 600, 800));
    EXPECT_EQ(view.currentPageIndex(), 0);
    EXPECT_EQ(pageChanges, 1);
}

TEST_F(PDFKitViewTest, FitsTheWidthAgainAfterAResize)
{
    showPages();
    resizeViewport({1224, 600});
    EXPECT_EQ(viewpoint().pageRect(0).width(), 1200);
}

TEST_F(PDFKitViewTest, ComesToRestWherePagesOfDifferentWidthsMeet)
{
    for (qint64 page = 1; page < pages.count; page += 2)
        pages.otherSizes[page] = QSizeF(650, 800);
    showPages();
    for (int step = 0; step < 60; ++step) {
        view.scrollBy({0, 29}, PDFKitView::Motion::Instant);
        pages.answerAll();
        QApplication::processEvents();
        EXPECT_EQ(view.viewport()->size(), QSize(kWidth, kHeight));
        EXPECT_DOUBLE_EQ(viewpoint().scale(), 1);
    }
}

TEST_F(PDFKitViewTest, AsksForPicturesAsItIsShownWhenSizesAreThere)
{
    view.hide();
    pages.ready = {Kind::Sizes};
    view.setPages(pages.source());
    EXPECT_TRUE(pages.wanted(Kind::Picture).empty());
    view.show();
    EXPECT_FALSE(pages.wanted(Kind::Picture).empty());
}

TEST_F(PDFKitViewTest, AsksForPicturesWhenItIsToldToTakeSizes)
{
    pages.ready = {Kind::Sizes};
    view.setPages(pages.source());
    EXPECT_TRUE(pages.wanted(Kind::Picture).empty());
    view.takeSizes();
    EXPECT_FALSE(pages.wanted(Kind::Picture).empty());
}

TEST_F(PDFKitViewTest, PaintsPicturesThatAreThere)
{
    pages.ready = {Kind::Picture};
    pages.color = Qt::red;
    view.setPages(pages.source());
    pages.answerNext(); // the sizes
    ASSERT_FALSE(pages.wanted(Kind::Picture).empty());
    EXPECT_EQ(picture().pixelColor(100, 100), QColor(Qt::red));
}

TEST_F(PDFKitViewTest, AsksForSizesThenForThePicture)
{
    view.setPages(pages.source());
    ASSERT_EQ(pages.questions.size(), 1u);
    EXPECT_EQ(pages.wanted(Kind::Sizes).size(), 1u);
    pages.answerNext();
    ASSERT_EQ(pages.wanted(Kind::Picture).size(), 1u);
    EXPECT_EQ(pages.wanted(Kind::Picture).front().tile, (PageTile{0, {1, 0, false}, QRect(0, 0, 600, 800)}));
}

TEST_F(PDFKitViewTest, AsksForSizesAloneBeforeItIsOnTheScreen)
{
    view.hide();
    view.setPages(pages.source());
    ASSERT_EQ(pages.questions.size(), 1U);
    EXPECT_EQ(pages.wanted(Kind::Sizes).size(), 1U);
    pages.answerNext();
    EXPECT_TRUE(pages.questions.empty());
    view.show();
    EXPECT_FALSE(pages.wanted(Kind::Picture).empty());
}

TEST_F(PDFKitViewTest, StopsWhatIsNoLongerVisible)
{
    showPages();
    view.goToPage(5);
    const PageJob passed = pages.wanted(Kind::Picture).front();
    view.goToPage(9);
    EXPECT_THAT(pages.wanted(Kind::Picture), testing::Not(testing::Contains(passed)));
}

TEST_F(PDFKitViewTest, GoesToAPageAndBack)
{
    showPages();
    view.scrollBy({0, 100}, PDFKitView::Motion::Instant);
    const double left = top();
    view.goToPage(7);
    EXPECT_EQ(view.currentPageIndex(), 7);
    EXPECT_EQ(viewpoint().pageRect(7).top(), PageLayout::kGap);
    EXPECT_TRUE(view.canGoBack());
    view.goBack();
    EXPECT_EQ(top(), left);
    EXPECT_TRUE(view.canGoForward());
    view.goForward();
    EXPECT_EQ(viewpoint().pageRect(7).top(), PageLayout::kGap);
    EXPECT_EQ(historyChanges, 4) << "once for the document, the jump, and each step";
}

TEST_F(PDFKitViewTest, TellsOfAJumpToWhereItIs)
{
    showPages();
    historyChanges = 0;
    view.goToPage(0);
    EXPECT_EQ(historyChanges, 1);
    EXPECT_FALSE(view.canGoBack());
}

TEST_F(PDFKitViewTest, ForgetsTheWayBack)
{
    showPages();
    view.goToPage(3);
    view.goToPage(5);
    view.goBack();
    view.forgetHistory();
    EXPECT_FALSE(view.canGoBack());
    EXPECT_FALSE(view.canGoForward());
    EXPECT_EQ(view.currentPageIndex(), 3);
}

TEST_F(PDFKitViewTest, RemembersNoPositionThatScrollingLeft)
{
    showPages();
    view.scrollBy({0, 3000}, PDFKitView::Motion::Instant);
    QTest::keyClick(&view, Qt::Key_End);
    rest();
    view.verticalScrollBar()->setValue(100);
    EXPECT_FALSE(view.canGoBack());
}

TEST_F(PDFKitViewTest, RemembersNoJumpToWhereItIs)
{
    showPages();
    view.goToPage(0);
    EXPECT_FALSE(view.canGoBack());
}

TEST_F(PDFKitViewTest, ComesBackToTheExactPositionOfAZoomedPage)
{
    showPages();
    for (int i = 0; i < 8; ++i)
        view.zoomIn();
    view.scrollBy({131, 777}, PDFKitView::Motion::Instant);
    const QPointF left = viewpoint().offset();
    view.goToPosition({8, {50, 300}});
    EXPECT_NE(viewpoint().offset(), left);
    view.goBack();
    EXPECT_NEAR(viewpoint().offset().x(), left.x(), 1e-6);
    EXPECT_NEAR(viewpoint().offset().y(), left.y(), 1e-6);
}

TEST_F(PDFKitViewTest, GoesToNoPageThatIsNot)
{
    showPages();
    view.goToPage(-1);
    view.goToPage(10);
    EXPECT_EQ(view.currentPageIndex(), 0);
    EXPECT_FALSE(view.canGoBack());
}

TEST_F(PDFKitViewTest, CallsThePageThatWasAskedForCurrentUntilOneScrolls)
{
    pages.usualSize = {600, 100};
    showPages();
    view.goToPage(9);
    EXPECT_EQ(view.currentPageIndex(), 9) << "though it cannot come to the top";
    view.scrollBy({0, -1}, PDFKitView::Motion::Instant);
    EXPECT_EQ(view.currentPageIndex(), 6);
}

TEST_F(PDFKitViewTest, TellsOfAPageOnceWhileScrolling)
{
    showPages();
    pageChanges = 0;
    view.scrollBy({0, 400}, PDFKitView::Motion::Instant);
    EXPECT_EQ(pageChanges, 0);
    view.scrollBy({0, 400}, PDFKitView::Motion::Instant);
    EXPECT_EQ(pageChanges, 1);
    EXPECT_EQ(view.currentPageIndex(), 1);
}

TEST_F(PDFKitViewTest, ZoomsInStepsAroundTheMiddle)
{
    showPages();
    view.zoomToActualSize();
    EXPECT_DOUBLE_EQ(view.zoom(), 1);
    EXPECT_NEAR(viewpoint().scale(), view.logicalDpiX() / 72.0, 1e-9);
    const QPointF center = QRectF(view.viewport()->rect()).center();
    const PDFPosition middle = viewpoint().positionAt(center);
    QSignalSpy changes(&view, &PDFKitView::zoomChanged);
    view.zoomIn();
    EXPECT_DOUBLE_EQ(view.zoom(), 1.1);
    EXPECT_NEAR(viewpoint().positionAt(center).point.y(), middle.point.y(), 1e-6);
    view.zoomOut();
    EXPECT_DOUBLE_EQ(view.zoom(), 1);
    EXPECT_EQ(changes.count(), 2);
    view.scaleAutomatically();
    EXPECT_DOUBLE_EQ(viewpoint().scale(), 1);
}

TEST_F(PDFKitViewTest, FitsAPageAndKeepsFittingIt)
{
    showPages();
    view.scaleToPage();
    EXPECT_DOUBLE_EQ(viewpoint().pageRect(0).height(), kHeight - 24);
    resizeViewport({kWidth, 824});
    EXPECT_DOUBLE_EQ(viewpoint().pageRect(0).height(), 800);
}

TEST_F(PDFKitViewTest, DrawsTurnedPages)
{
    showPages();
    view.rotatePages(PDFKitView::Turn::Right);
    ASSERT_FALSE(pages.wanted(Kind::Picture).empty());
    const PageTile tile = pages.wanted(Kind::Picture).front().tile;
    EXPECT_EQ(tile.style.turns, 1);
    EXPECT_EQ(tile.part, QRect(0, 0, 600, 450));
    view.rotatePages(PDFKitView::Turn::Left);
    view.rotatePages(PDFKitView::Turn::Left);
    EXPECT_EQ(pages.wanted(Kind::Picture).front().tile.style.turns, 3);
}

TEST_F(PDFKitViewTest, HasTheEngineDrawDarkPages)
{
    showPages();
    view.setDarkMode(true);
    ASSERT_FALSE(pages.wanted(Kind::Picture).empty());
    EXPECT_TRUE(pages.wanted(Kind::Picture).front().tile.style.isDark);
}

TEST_F(PDFKitViewTest, KeepsItsPlaceWhenSizesArriveLate)
{
    pages = FakePages(1000);
    for (qint64 page = 0; page < 700; ++page)
        pages.otherSizes[page] = QSizeF(600, 700 + double(page % 50));
    showPages();
    view.goToPage(640);
    const double shown = viewpoint().pageRect(640).top();
    EXPECT_EQ(shown, PageLayout::kGap);
    pages.answerAll();
    EXPECT_NEAR(viewpoint().pageRect(640).top(), shown, 1e-6);
    EXPECT_EQ(view.currentPageIndex(), 640);
}

TEST_F(PDFKitViewTest, ShowsWhatItHasAndAsksNothingAfterTheEngineWasLost)
{
    pages.color = Qt::green;
    showPages();
    pages.failures[{Kind::Picture, 3}] = pdfError(PDFErrorCode::EngineFailed);
    view.goToPage(3);
    pages.answerAll();
    view.goToPage(6);
    EXPECT_TRUE(pages.questions.empty());
    view.goToPage(0);
    EXPECT_EQ(picture().pixelColor(300, 250), QColor(Qt::green));
    pages.failures.clear();
    view.goToPage(6);
    view.resume();
    pages.answerAll();
    EXPECT_EQ(picture().pixelColor(300, 250), QColor(Qt::green));
}

TEST_F(PDFKitViewTest, ForgetsEverythingOfTheDocumentBefore)
{
    pages.texts[0] = placedLines({QStringLiteral("words")});
    showPages();
    view.goToPage(5);
    view.selectAll();
    pages.count = 3;
    view.setPages(pages.source());
    EXPECT_FALSE(view.canGoBack());
    EXPECT_EQ(view.currentSelection(), std::nullopt);
    EXPECT_EQ(view.currentPageIndex(), 0);
    EXPECT_EQ(view.cache().bytes(), 0);
}

TEST_F(PDFKitViewTest, HoldsTheCacheLimitAtEveryScale)
{
    resizeViewport({1800, 1000});
    showPages();
    for (int i = 0; i < 20; ++i) {
        view.zoomIn();
        for (int step = 0; step < 5; ++step) {
            view.scrollBy({50, 400}, PDFKitView::Motion::Instant);
            while (!pages.questions.empty()) {
                pages.answerNext();
                ASSERT_LE(view.cache().bytes(), kPageCacheBytes);
            }
        }
    }
    EXPECT_GT(view.cache().bytes(), kPageCacheBytes / 2);
}

TEST_F(PDFKitViewTest, ScrollsADocumentOfTwoThousandMillionPages)
{
    pages.count = 0x7fffffff;
    view.setPages(pages.source());
    pages.answerNext();
    view.verticalScrollBar()->setValue(view.verticalScrollBar()->maximum());
    EXPECT_EQ(view.currentPageIndex(), 0x7ffffffe);
    view.goToPage(123456789);
    EXPECT_EQ(view.currentPageIndex(), 123456789);
}

TEST_F(PDFKitViewTest, DescribesWhatItShows)
{
    pages.texts[0] = placedLines({QStringLiteral("some words")});
    showPages();
    EXPECT_EQ(view.accessibleName(), QStringLiteral("Document"));
    EXPECT_EQ(view.accessibleDescription(), QStringLiteral("Page 1 of 10"));
    view.startSelection({0, {55, 110}}, PDFTextUnit::Word);
    EXPECT_EQ(view.accessibleDescription(), QStringLiteral("Page 1 of 10. Selected: some"));
    view.goToPage(4);
    EXPECT_EQ(view.accessibleDescription(), QStringLiteral("Page 5 of 10. Selected: some"));
}
