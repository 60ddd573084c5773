#include "ui/PaperGrid.h"
#include "app/LibraryViewModel.h"
#include "ui/GridFixture.h"

#include <QScrollBar>
#include <QToolTip>
#include <QWheelEvent>

namespace
{
/// A grid of four columns.
class PaperGridTest : public ::testing::Test, protected GridFixture
{
protected:
    PaperGridTest()
    {
        grid.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        grid.resize(840, 700);
        activate(grid);
    }

    void fill(int count) { grid.papers().setPapers(papers(count)); }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(&grid, key, modifiers); }
    int current() const { return grid.currentIndex().row(); }
    QPoint centre(int row) const { return grid.visualRect(grid.model()->index(row, 0)).center(); }
    void select(int row) { QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, centre(row)); }

    PaperGrid grid{vm(), covers, CardKind::Paper};
    QSignalSpy selections{&grid, &PaperGrid::selected};
    QSignalSpy openings{&grid, &PaperGrid::opened};
};
} // namespace

// Keys.

TEST_F(PaperGridTest, MovesByColumnAndByLine)
{
    fill(11);
    select(1);
    press(Qt::Key_Right);
    EXPECT_EQ(current(), 2);
    press(Qt::Key_Down);
    EXPECT_EQ(current(), 6);
    press(Qt::Key_Left);
    EXPECT_EQ(current(), 5);
    press(Qt::Key_Up);
    EXPECT_EQ(current(), 1);
    EXPECT_EQ(grid.selectedPaperId(), u"p1");
}

TEST_F(PaperGridTest, StaysAtTheEdges)
{
    fill(11);
    select(0);
    press(Qt::Key_Left);
    press(Qt::Key_Up);
    EXPECT_EQ(current(), 0);
    press(Qt::Key_End);
    EXPECT_EQ(current(), 10);
    press(Qt::Key_Right);
    press(Qt::Key_Down);
    EXPECT_EQ(current(), 10);
    press(Qt::Key_Home);
    EXPECT_EQ(current(), 0);
}

TEST_F(PaperGridTest, GoesToTheLastCardWhenTheLineBelowIsShorter)
{
    fill(10);
    select(7);
    press(Qt::Key_Down);
    EXPECT_EQ(current(), 9);
}

TEST_F(PaperGridTest, PagesByTheLinesInSight)
{
    fill(100);
    select(1);
    const int lines = grid.viewport()->height() / grid.geometryOfCards().lineHeight();
    ASSERT_EQ(lines, 2);
    press(Qt::Key_PageDown);
    EXPECT_EQ(current(), 1 + 2 * 4);
    press(Qt::Key_PageDown);
    press(Qt::Key_PageUp);
    EXPECT_EQ(current(), 1 + 2 * 4);
    press(Qt::Key_PageUp);
    press(Qt::Key_PageUp);
    EXPECT_EQ(current(), 1);
}

TEST_F(PaperGridTest, BringsTheCurrentCardIntoSight)
{
    fill(100);
    select(0);
    press(Qt::Key_End);
    EXPECT_TRUE(grid.viewport()->rect().contains(grid.visualRect(grid.currentIndex())));
    press(Qt::Key_Home);
    EXPECT_EQ(grid.verticalScrollBar()->value(), 0);
}

TEST_F(PaperGridTest, MovesInOneColumnWhenNarrow)
{
    fill(5);
    grid.resize(220, 700);
    select(0);
    press(Qt::Key_Down);
    EXPECT_EQ(current(), 1);
    press(Qt::Key_Right);
    EXPECT_EQ(current(), 2);
}

TEST_F(PaperGridTest, OpensTheCurrentCardWithReturn)
{
    fill(3);
    select(2);
    press(Qt::Key_Return);
    press(Qt::Key_Enter, Qt::KeypadModifier);
    ASSERT_EQ(openings.size(), 2);
    EXPECT_EQ(openings.at(0).at(0).toInt(), 2);
}

TEST_F(PaperGridTest, AsksBeforeItRemovesTheCurrentPaper)
{
    fill(3);
    select(1);
    press(Qt::Key_Delete);
    ASSERT_TRUE(vm().confirmDeletePaper.value());
    EXPECT_EQ(vm().confirmDeletePaper.value()->id, u"p1");
}

TEST_F(PaperGridTest, HandsOnWishesAboutTheSelectedPaper)
{
    QSignalSpy details(&grid, &PaperGrid::detailsToggleRequested);
    QSignalSpy edits(&grid, &PaperGrid::editRequested);
    QSignalSpy tags(&grid, &PaperGrid::tagRequested);
    fill(3);
    select(0);
    press(Qt::Key_Space);
    EXPECT_EQ(details.size(), 1);
    press(Qt::Key_F2);
    EXPECT_EQ(edits.size(), 1);
    press(Qt::Key_T, Qt::ControlModifier);
    EXPECT_EQ(tags.size(), 1);
}

TEST_F(PaperGridTest, HasNoWishesAboutNoPaper)
{
    QSignalSpy edits(&grid, &PaperGrid::editRequested);
    fill(0);
    press(Qt::Key_Return);
    press(Qt::Key_Delete);
    press(Qt::Key_F2);
    EXPECT_EQ(openings.size() + edits.size(), 0);
    EXPECT_FALSE(vm().confirmDeletePaper.value());
}

TEST_F(PaperGridTest, SelectsByTypingTheBeginningOfATitle)
{
    QList<Paper> list = papers(30);
    list[17].title = QStringLiteral("Graph cuts");
    list[23].title = QStringLiteral("Grammar");
    grid.papers().setPapers(list);
    select(0);
    QTest::keyClicks(&grid, QStringLiteral("gram"));
    EXPECT_EQ(grid.selectedPaperId(), u"p23");
}

// Mouse.

TEST_F(PaperGridTest, SelectsTheClickedCard)
{
    fill(8);
    select(5);
    EXPECT_EQ(grid.selectedPaperId(), u"p5");
    ASSERT_EQ(selections.size(), 1);
    EXPECT_EQ(selections.at(0).at(0).toInt(), 5);
}

TEST_F(PaperGridTest, SelectsNothingOnAClickBesideTheCards)
{
    fill(8);
    select(5);
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, {5, 5});
    EXPECT_EQ(grid.selectedPaperId(), u"");
    EXPECT_EQ(selections.last().at(0).toInt(), -1);
}

TEST_F(PaperGridTest, OpensADoubleClickedCardOnce)
{
    fill(8);
    select(3);
    EXPECT_EQ(openings.size(), 0);
    QTest::mouseDClick(grid.viewport(), Qt::LeftButton, {}, centre(3));
    ASSERT_EQ(openings.size(), 1);
    EXPECT_EQ(openings.at(0).at(0).toInt(), 3);
}

TEST_F(PaperGridTest, GlidesWithTheWheel)
{
    const auto former = QApplication::style()->name();
    QApplication::setStyle(new MotionStyle(200));
    fill(100);
    QWheelEvent notch({100, 100}, grid.mapToGlobal(QPointF(100, 100)), {}, {0, -120}, Qt::NoButton, {},
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(grid.viewport(), &notch);
    const auto *bar = grid.verticalScrollBar();
    auto *glide = bar->findChild<QPropertyAnimation *>();
    ASSERT_TRUE(glide);
    EXPECT_EQ(bar->value(), 0);
    QApplication::sendEvent(grid.viewport(), &notch);
    glide->setCurrentTime(glide->duration());
    EXPECT_EQ(bar->value(), 2 * bar->singleStep());
    QApplication::setStyle(former);
}

TEST_F(PaperGridTest, JumpsWithTheWheelWithoutMotion)
{
    const auto former = QApplication::style()->name();
    QApplication::setStyle(new MotionStyle(0));
    fill(100);
    QWheelEvent notch({100, 100}, grid.mapToGlobal(QPointF(100, 100)), {}, {0, -120}, Qt::NoButton, {},
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(grid.viewport(), &notch);
    const auto *bar = grid.verticalScrollBar();
    EXPECT_EQ(bar->value(), bar->singleStep());
    QApplication::setStyle(former);
}

TEST_F(PaperGridTest, ShowsTheWholeTitleOverACardThatCutsIt)
{
    QList<Paper> list = papers(2);
    list[0].title = QString(u"A <title> " + QStringLiteral("that goes on ").repeated(12)).trimmed();
    grid.papers().setPapers(list);
    QHelpEvent over(QEvent::ToolTip, centre(0), grid.viewport()->mapToGlobal(centre(0)));
    QApplication::sendEvent(grid.viewport(), &over);
    EXPECT_EQ(QToolTip::text(), QString(u"<p>" + list[0].title.toHtmlEscaped() + u"</p>"));
    QToolTip::hideText();
}

// Lists that change.

TEST_F(PaperGridTest, KeepsTheSelectionThroughAReload)
{
    fill(20);
    select(5);
    QList<Paper> reloaded = papers(20);
    reloaded.removeFirst();
    reloaded[0].title = QStringLiteral("Edited");
    grid.papers().setPapers(reloaded);
    EXPECT_EQ(grid.selectedPaperId(), u"p5");
    EXPECT_EQ(current(), 4);
    EXPECT_TRUE(grid.selectionModel()->isRowSelected(4, {}));
    EXPECT_EQ(selections.size(), 1) << "the person selected once";
}

TEST_F(PaperGridTest, FindsTheSelectionAgainAfterAListWithoutIt)
{
    fill(20);
    select(5);
    grid.papers().setPapers(papers(3));
    EXPECT_FALSE(grid.selectionModel()->hasSelection());
    EXPECT_EQ(grid.selectedPaperId(), u"p5");
    fill(20);
    EXPECT_EQ(current(), 5);
    EXPECT_TRUE(grid.selectionModel()->isRowSelected(5, {}));
}

TEST_F(PaperGridTest, KeepsItsPlaceThroughAReload)
{
    fill(200);
    grid.verticalScrollBar()->setValue(1500);
    QList<Paper> reloaded = papers(200);
    reloaded.removeLast();
    grid.papers().setPapers(reloaded);
    EXPECT_EQ(grid.verticalScrollBar()->value(), 1500);
}

TEST_F(PaperGridTest, LeavesTheKeyboardWhereARemovedCardWas)
{
    fill(20);
    select(5);
    grid.selectPaper({});
    QList<Paper> fewer = papers(20);
    fewer.removeAt(5);
    grid.papers().setPapers(fewer);
    EXPECT_EQ(current(), 5);
    EXPECT_FALSE(grid.selectionModel()->hasSelection());
}

TEST_F(PaperGridTest, ScrollsToAPaper)
{
    fill(500);
    EXPECT_TRUE(grid.scrollToPaper(QStringLiteral("p321")));
    EXPECT_TRUE(grid.viewport()->rect().contains(grid.visualRect(grid.model()->index(321, 0))));
    EXPECT_FALSE(grid.scrollToPaper(QStringLiteral("nobody")));
}

TEST_F(PaperGridTest, KeepsWhatIsInSightWhenItsWidthChanges)
{
    fill(500);
    grid.scrollToPaper(QStringLiteral("p300"));
    select(300);
    const int top = grid.visualRect(grid.currentIndex()).top();
    grid.resize(1200, 700);
    EXPECT_EQ(grid.geometryOfCards().columns(), 6);
    EXPECT_EQ(grid.visualRect(grid.currentIndex()).top(), top);
}

TEST_F(PaperGridTest, AnswersWhichCardIsAtAPoint)
{
    fill(100);
    grid.verticalScrollBar()->setValue(700);
    for (const int row : {8, 9, 10, 11})
        EXPECT_EQ(grid.indexAt(centre(row)).row(), row);
    EXPECT_FALSE(grid.indexAt({1, 1}).isValid());
}

TEST_F(PaperGridTest, MovesCardsOnTheSpringWhenItsListChanges)
{
    const auto former = QApplication::style()->name();
    QApplication::setStyle(new MotionStyle(200));
    grid.setAnimatesChanges(true);
    fill(8);
    QList<Paper> fewer = papers(8);
    fewer.removeFirst();
    grid.papers().setPapers(fewer);
    auto *motion = grid.findChild<QVariantAnimation *>();
    ASSERT_TRUE(motion);
    EXPECT_EQ(motion->state(), QAbstractAnimation::Running);
    const QImage start = grid.grab().toImage();
    motion->setCurrentTime(motion->duration());
    EXPECT_EQ(motion->state(), QAbstractAnimation::Stopped);
    EXPECT_NE(grid.grab().toImage(), start);
    QApplication::setStyle(former);
}

TEST_F(PaperGridTest, MovesNothingWhenTheDesktopAsksForNoMotion)
{
    const auto former = QApplication::style()->name();
    QApplication::setStyle(new MotionStyle(0));
    grid.setAnimatesChanges(true);
    fill(8);
    fill(7);
    EXPECT_EQ(grid.findChild<QVariantAnimation *>()->state(), QAbstractAnimation::Stopped);
    QApplication::setStyle(former);
}
