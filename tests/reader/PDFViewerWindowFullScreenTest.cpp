#include "reader/ReaderWindowFixture.h"

#include <QLineEdit>
#include <QMenuBar>

namespace
{
class PDFViewerWindowFullScreen : public ReaderWindowTest
{
protected:
    void openPaper()
    {
        open(requestFor(writePdf(QStringLiteral("paper.pdf"), {{QStringLiteral("a page")}})));
    }
};
} // namespace

TEST_F(PDFViewerWindowFullScreen, FillsTheScreenByF11AndLeavesItByEscape)
{
    openPaper();
    QTest::keyClick(&window->view(), Qt::Key_F11);
    EXPECT_TRUE(window->isFullScreen());
    EXPECT_FALSE(isShown("readerToolBar"));
    QTest::keyClick(&window->view(), Qt::Key_Escape);
    EXPECT_FALSE(window->isFullScreen());
    EXPECT_TRUE(isShown("readerToolBar"));
}

TEST_F(PDFViewerWindowFullScreen, LeavesTheFullScreenAlsoWhenTheDesktopEndsIt)
{
    openPaper();
    actions().fullScreen->trigger();
    window->setWindowState(Qt::WindowNoState);
    EXPECT_FALSE(actions().fullScreen->isChecked());
    EXPECT_TRUE(isShown("readerToolBar"));
    EXPECT_TRUE(window->menuBar()->isVisible());
    window->setWindowState(Qt::WindowFullScreen);
    EXPECT_TRUE(actions().fullScreen->isChecked());
    EXPECT_FALSE(isShown("readerToolBar"));
}

TEST_F(PDFViewerWindowFullScreen, SearchesAndTakesPageNumbersOnTheFullScreen)
{
    openPaper();
    QTest::keyClick(&window->view(), Qt::Key_F11);
    QTest::keyClick(&window->view(), Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(isShown("readerToolBar"));
    EXPECT_TRUE(find<QLineEdit>("readerSearchField")->hasFocus());
    actions().fullScreen->setChecked(false);
    actions().fullScreen->setChecked(true);
    EXPECT_FALSE(isShown("readerToolBar"));
    QTest::keyClick(&window->view(), Qt::Key_G, Qt::ControlModifier);
    EXPECT_TRUE(isShown("readerToolBar"));
    EXPECT_TRUE(find<QLineEdit>("pageNumber")->hasFocus());
    EXPECT_TRUE(window->isFullScreen());
}
