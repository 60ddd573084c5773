// Every button of the reader's tool bar, and every entry of its menu, as a person uses them.
#include "reader/ReaderWindowFixture.h"

#include <QDialog>
#include <QLineEdit>
#include <QMenu>
#include <QPrintDialog>
#include <QToolBar>
#include <QToolButton>

namespace
{

class PDFViewerWindowToolBar : public ReaderWindowTest
{
protected:
    void SetUp() override
    {
        openAndArrive(requestFor(writePdf(
            QStringLiteral("two.pdf"), {{QStringLiteral("first page")}, {QStringLiteral("second page")}})));
        window->resize(1400, 700); // wide enough for all of it
        QApplication::sendPostedEvents();
    }

    void press(const QAction *action)
    {
        auto *bar = find<QToolBar>("readerToolBar");
        QWidget *button = bar->widgetForAction(const_cast<QAction *>(action));
        ASSERT_TRUE(button && button->isVisible()) << action->text().toStdString();
        QTest::mouseClick(button, Qt::LeftButton);
        rest();
    }

    void choose(const QAction *action)
    {
        QMenu *menu = actions().more->menu();
        menu->popup(window->pos());
        QTest::mouseClick(menu, Qt::LeftButton, {},
                          menu->actionGeometry(const_cast<QAction *>(action)).center());
        rest();
    }

    double zoom() { return window->view().zoom(); }
    QSizeF firstPage() { return window->view().viewpoint().layout().size(0); }
};

} // namespace

TEST_F(PDFViewerWindowToolBar, LeadsBackAndForward)
{
    EXPECT_FALSE(actions().back->isEnabled());
    EXPECT_FALSE(actions().forward->isEnabled());
    reader().goToPageText(QStringLiteral("2"));
    rest();
    press(actions().back);
    EXPECT_EQ(reader().currentPage, 1);
    EXPECT_FALSE(actions().back->isEnabled());
    press(actions().forward);
    EXPECT_EQ(reader().currentPage, 2);
    EXPECT_FALSE(actions().forward->isEnabled());
}

TEST_F(PDFViewerWindowToolBar, ZoomsInAndOutAndToTheActualSize)
{
    press(actions().actualSize);
    EXPECT_DOUBLE_EQ(zoom(), 1);
    press(actions().zoomIn);
    EXPECT_GT(zoom(), 1);
    press(actions().zoomOut);
    EXPECT_DOUBLE_EQ(zoom(), 1);
    press(actions().zoomOut);
    EXPECT_LT(zoom(), 1);
}

TEST_F(PDFViewerWindowToolBar, AsksForTheLabelOfABookmark)
{
    press(actions().bookmarkSelection);
    auto *alert = find<QDialog>("bookmarkAlert");
    EXPECT_TRUE(alert->isVisible());
    EXPECT_EQ(alert->windowTitle(), u"Bookmark Selection");
}

TEST_F(PDFViewerWindowToolBar, DarkensPagesAndLightensThemAgain)
{
    press(actions().darkMode);
    EXPECT_TRUE(window->view().isDarkMode());
    press(actions().darkMode);
    EXPECT_FALSE(window->view().isDarkMode());
}

TEST_F(PDFViewerWindowToolBar, HidesTheSidebarAndShowsItAgain)
{
    EXPECT_TRUE(isShown("readerSidebar"));
    press(actions().sidebar);
    EXPECT_FALSE(isShown("readerSidebar"));
    press(actions().sidebar);
    EXPECT_TRUE(isShown("readerSidebar"));
}

TEST_F(PDFViewerWindowToolBar, TurnsPagesToTheRightAndInItsMenuToTheLeft)
{
    const QSizeF upright = firstPage();
    press(actions().rotateRight);
    EXPECT_EQ(firstPage(), upright.transposed());
    choose(actions().rotateLeft);
    EXPECT_EQ(firstPage(), upright);
}

TEST_F(PDFViewerWindowToolBar, FitsPageAndWidthFromItsMenu)
{
    choose(actions().fitPage);
    EXPECT_EQ(window->view().fit(), Viewpoint::Fit::Page);
    choose(actions().fitWidth);
    EXPECT_EQ(window->view().fit(), Viewpoint::Fit::Width);
}

TEST_F(PDFViewerWindowToolBar, FillsTheScreenFromItsMenu)
{
    choose(actions().fullScreen);
    EXPECT_TRUE(window->isFullScreen());
}

TEST_F(PDFViewerWindowToolBar, ShowsTheLibraryFromItsMenu)
{
    choose(actions().showLibrary);
    EXPECT_EQ(libraryShown, 1);
}

TEST_F(PDFViewerWindowToolBar, AsksHowToPrintFromItsMenu)
{
    choose(actions().print);
    const auto *dialog = window->findChild<QPrintDialog *>();
    ASSERT_TRUE(dialog);
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_EQ(dialog->maxPage(), 2);
}

TEST_F(PDFViewerWindowToolBar, StartsASearchFromTheLensInItsField)
{
    auto *field = find<QLineEdit>("readerSearchField");
    auto *lens = field->findChild<QToolButton *>();
    ASSERT_TRUE(lens && lens->defaultAction() == actions().find);
    window->view().setFocus();
    QTest::mouseClick(lens, Qt::LeftButton);
    EXPECT_TRUE(field->hasFocus());
}
