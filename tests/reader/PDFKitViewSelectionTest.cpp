#include "pdf/PDFDocument.h"
#include "reader/ReaderViewFixture.h"

#include <QAction>
#include <QClipboard>

namespace
{
class PDFKitViewSelectionTest : public ReaderViewTest
{
protected:
    PDFSelection passageOn(qint64 page) const
    {
        return PDFSelection(page, placedLines({QStringLiteral("a passage")}), {2, 9});
    }

    /// The colour of the page under the start of a passage.
    QColor colorOfPassage(qint64 page) { return picture().pixelColor(pointOf(page, {75, 110})); }
};
} // namespace

TEST_F(PDFKitViewSelectionTest, TakesASelectionThatIsSet)
{
    showPages();
    selectionChanges = 0;
    view.setCurrentSelection(passageOn(0), PDFView::Animate::No);
    EXPECT_EQ(view.currentSelection(), passageOn(0));
    EXPECT_EQ(selectionChanges, 1);
    view.setCurrentSelection(std::nullopt, PDFView::Animate::No);
    EXPECT_EQ(view.currentSelection(), std::nullopt);
    EXPECT_EQ(selectionChanges, 2);
}

TEST_F(PDFKitViewSelectionTest, ScrollsToASelectionAndBack)
{
    showPages();
    view.goToSelection(passageOn(5));
    const QRectF line = viewpoint().pageTransform(5).mapRect(passageOn(5).lineRectangles(5).first());
    EXPECT_TRUE(QRectF(view.viewport()->rect()).contains(line));
    EXPECT_EQ(view.currentPageIndex(), 5);
    view.goBack();
    EXPECT_EQ(top(), 0);
}

TEST_F(PDFKitViewSelectionTest, DoesNotMoveForASelectionThatIsVisible)
{
    showPages();
    view.goToSelection(passageOn(0));
    EXPECT_EQ(top(), 0);
    EXPECT_FALSE(view.canGoBack());
}

TEST_F(PDFKitViewSelectionTest, ScrollsSidewaysToASelectionOfAZoomedPage)
{
    showPages();
    view.zoomBy(8, {600, 250});
    view.goToSelection(passageOn(3));
    const QRectF line = viewpoint().pageTransform(3).mapRect(passageOn(3).lineRectangles(3).first());
    EXPECT_TRUE(QRectF(view.viewport()->rect()).contains(line.topLeft()));
}

TEST_F(PDFKitViewSelectionTest, LightsASelectionThatIsSetInAnotherColour)
{
    pages.texts[0] = placedLines({QStringLiteral("a passage")});
    showPages();
    view.setCurrentSelection(passageOn(0), PDFView::Animate::No);
    const QColor lit = colorOfPassage(0);
    view.startSelection({0, {75, 110}}, PDFTextUnit::Word);
    const QColor selected = colorOfPassage(0);
    EXPECT_NE(lit, QColor(Qt::white));
    EXPECT_NE(selected, QColor(Qt::white));
    EXPECT_NE(lit, selected);
}

TEST_F(PDFKitViewSelectionTest, LightsSoftlyWhereThatIsAskedFor)
{
    showPages();
    view.setCurrentSelection(passageOn(0), PDFView::Animate::Yes);
    EXPECT_EQ(colorOfPassage(0), QColor(Qt::white));
    clock.advance(std::chrono::milliseconds(100));
    const QColor onTheWay = colorOfPassage(0);
    EXPECT_NE(onTheWay, QColor(Qt::white));
    rest();
    const QColor lit = colorOfPassage(0);
    EXPECT_NE(lit, onTheWay);
    EXPECT_FALSE(clock.hasPendingCalls());
    view.setCurrentSelection(passageOn(0), PDFView::Animate::No);
    EXPECT_EQ(colorOfPassage(0), lit);
}

TEST_F(PDFKitViewSelectionTest, KeepsWordsReadableUnderTheLight)
{
    pages.color = QColor(20, 20, 20);
    showPages();
    view.setCurrentSelection(passageOn(0), PDFView::Animate::No);
    EXPECT_LT(colorOfPassage(0).lightness(), 30) << "black stays black on a light page";
    pages.color = QColor(235, 235, 235);
    view.setDarkMode(true);
    pages.answerAll();
    EXPECT_GT(colorOfPassage(0).lightness(), 225) << "white stays white on a dark one";
    pages.color = Qt::black;
    view.setPages(pages.source());
    view.setCurrentSelection(passageOn(0), PDFView::Animate::No);
    pages.answerAll();
    EXPECT_GT(colorOfPassage(0).lightness(), 30) << "and the light shows on black";
}

TEST_F(PDFKitViewSelectionTest, LightsTheSamePlaceOfATurnedPage)
{
    showPages();
    view.setCurrentSelection(passageOn(0), PDFView::Animate::No);
    const QColor lit = colorOfPassage(0);
    view.rotatePages(PDFKitView::Turn::Left);
    view.goToPage(0);
    pages.answerAll();
    EXPECT_EQ(colorOfPassage(0), lit);
}

TEST_F(PDFKitViewSelectionTest, CopiesAWholeDocumentWhoseTextsItFetches)
{
    pages.count = 300;
    for (qint64 page = 0; page < pages.count; ++page)
        pages.texts[page] = placedLines({QStringLiteral("page %1").arg(page)});
    showPages();
    view.selectAll();
    QApplication::clipboard()->clear();
    view.copySelection();
    EXPECT_TRUE(QApplication::clipboard()->text().isEmpty());
    pages.answerAll();
    const QStringList lines = QApplication::clipboard()->text().split(u'\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 300);
    EXPECT_EQ(lines.first(), QStringLiteral("page 0"));
    EXPECT_EQ(lines.last(), QStringLiteral("page 299"));
}

TEST_F(PDFKitViewSelectionTest, CopiesWhatThereIsOfADocumentThatClaimsMorePages)
{
    pages.count = 0x7fffffff;
    pages.texts[0] = placedLines({QStringLiteral("the only page")});
    for (qint64 page = 1; page < 1000; ++page)
        pages.failures[{PageJob::Kind::Text, page}] = pdfError(PDFErrorCode::PageUnavailable);
    showPages();
    view.selectAll();
    view.copySelection();
    pages.answerAll();
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("the only page\n"));
}

TEST_F(PDFKitViewSelectionTest, TellsOfASelectionAgainWhenItsTextArrives)
{
    pages.texts[0] = placedLines({QStringLiteral("words")});
    view.setPages(pages.source());
    view.selectAll();
    EXPECT_EQ(view.currentSelection(), std::nullopt);
    selectionChanges = 0;
    pages.answerAll();
    EXPECT_GE(selectionChanges, 1);
    EXPECT_EQ(view.currentSelection()->string(), QStringLiteral("words\n"));
    EXPECT_TRUE(view.copyAction()->isEnabled());
}

TEST_F(PDFKitViewSelectionTest, SearchesTheLibraryForTheStartOfALongSelection)
{
    QStringList searches;
    QObject::connect(&view, &PDFKitView::librarySearchRequested, &view,
                     [&](const QString &text) { searches.append(text); });
    pages.texts[0] = placedLines(QStringList(100, QStringLiteral("ten  chars")));
    showPages();
    view.selectAll();
    view.searchInLibraryAction()->trigger();
    ASSERT_EQ(searches.size(), 1);
    EXPECT_TRUE(searches.first().startsWith(u"ten chars ten chars "));
    EXPECT_LE(searches.first().size(), 500);
}
