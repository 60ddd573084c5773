// Windows that go while something of theirs has the keyboard, is open or is under way. What is gone may not
// be touched then, which the builds with a sanitizer watch.
#include "reader/ReaderWindowFixture.h"

#include "reader/HeldRequest.h"

#include <QContextMenuEvent>
#include <QFileDialog>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QPrintDialog>
#include <QPushButton>
#include <QToolButton>
#include <QTreeView>

namespace
{

class PDFViewerWindowEnd : public ReaderWindowTest
{
protected:
    void openPaper()
    {
        const QByteArray first = PdfBuilder::pageReference(0);
        const QString path = library.folder.write(
            QStringLiteral("paper.pdf"),
            PdfBuilder()
                .page({QStringLiteral("on trees")})
                .page({QStringLiteral("more trees")})
                .catalogue("/Outlines 100000 0 R")
                .object(100'000, "<< /Type /Outlines /First 100001 0 R /Last 100001 0 R /Count 1 >>")
                .object(100'001, "<< /Title (Start) /Parent 100000 0 R /Dest [" + first + " /Fit] >>")
                .build());
        addPaper(QStringLiteral("p"), path);
        library.addPage(QStringLiteral("p"), 1, "on trees");
        library.addPage(QStringLiteral("p"), 2, "more trees");
        PDFOpenRequest request = requestFor(path);
        request.paperId = QStringLiteral("p");
        openAndArrive(request);
    }

    /// Ends the window both ways: by its closing, and with what has it.
    void expectEnd()
    {
        QSignalSpy closed(window, &PDFViewerWindow::closed);
        window->close();
        EXPECT_EQ(closed.size(), 1);
        delete window;
        QCoreApplication::processEvents();
        EXPECT_FALSE(window);
    }
};

} // namespace

TEST_F(PDFViewerWindowEnd, ComesWhileASearchIsTyped)
{
    openPaper();
    QTest::keyClick(&window->view(), Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(find<QLineEdit>("readerSearchField"), QStringLiteral("trees"));
    find<QLineEdit>("readerSearchField")->selectAll();
    expectEnd();
}

TEST_F(PDFViewerWindowEnd, ComesWhileAPageNumberIsTyped)
{
    openPaper();
    QTest::keyClick(&window->view(), Qt::Key_G, Qt::ControlModifier);
    QTest::keyClicks(find<QLineEdit>("pageNumber"), QStringLiteral("2"));
    expectEnd();
}

TEST_F(PDFViewerWindowEnd, ComesWhileAnItemOfEachPaneIsCurrent)
{
    openPaper();
    awaitThat(reader().outline, [this] { return !reader().outline.value().isEmpty(); });
    auto *outline = find<QTreeView>("outline");
    outline->setCurrentIndex(outline->model()->index(0, 0));
    reader().searchText = QStringLiteral("trees");
    clock.advance(std::chrono::milliseconds(400));
    awaitThat(reader().searchResults, [this] { return reader().searchResults.value().size() == 2; });
    reader().goToHit(1);
    auto *hits = find<QListView>("hits");
    hits->setFocus();
    EXPECT_TRUE(hits->currentIndex().isValid());
    expectEnd();
}

TEST_F(PDFViewerWindowEnd, ComesWhileItsDialogsAndMenusAreOpen)
{
    openPaper();
    actions().print->trigger();
    actions().bookmarkSelection->trigger();
    actions().more->menu()->popup(window->pos());
    EXPECT_TRUE(window->findChild<QPrintDialog *>());
    EXPECT_TRUE(window->findChild<QDialog *>(QStringLiteral("bookmarkAlert")));
    QContextMenuEvent menu(QContextMenuEvent::Mouse, {5, 5},
                           window->view().viewport()->mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(window->view().viewport(), &menu);
    EXPECT_TRUE(window->findChild<QMenu *>(QStringLiteral("pageMenu")));
    delete window; // as the program does that ends
    QCoreApplication::processEvents();
    EXPECT_FALSE(window);
}

TEST_F(PDFViewerWindowEnd, ComesWhileAMissingFileIsLookedFor)
{
    open(requestFor(library.folder.path(QStringLiteral("gone.pdf"))));
    QTest::mouseClick(find<QPushButton>("locateFile"), Qt::LeftButton);
    EXPECT_TRUE(find<QFileDialog>("locateDialog")->isVisible());
    delete window;
    QCoreApplication::processEvents();
    EXPECT_FALSE(window);
}

TEST_F(PDFViewerWindowEnd, ComesWhileAPasswordIsTyped)
{
    open(requestFor(library.folder.write(
        QStringLiteral("locked.pdf"),
        PdfBuilder().page({QStringLiteral("secret")}).lock(PdfLock::NeedsPassword).build())));
    QTest::keyClicks(find<QLineEdit>("password"), QStringLiteral("half"));
    expectEnd();
}

TEST_F(PDFViewerWindowEnd, ComesOnTheFullScreen)
{
    openPaper();
    actions().fullScreen->trigger();
    EXPECT_TRUE(window->isFullScreen());
    expectEnd();
}

TEST_F(PDFViewerWindowEnd, ComesWhileThePagesMoveAndAPassageIsAwaited)
{
    openPaper();
    QTest::keyClick(&window->view(), Qt::Key_End);
    HeldRequest held(window->opening().document());
    reader().highlight(QStringLiteral("trees"), 2);
    window->view().setCurrentSelection(std::nullopt, PDFView::Animate::Yes);
    window->view().selectAll();
    window->view().copySelection();
    delete window;
    held.letGo();
    clock.advance(std::chrono::seconds(1));
    QCoreApplication::processEvents();
    EXPECT_FALSE(clock.hasPendingCalls());
}

TEST_F(PDFViewerWindowEnd, ComesBeforeItsDocumentIsOpen)
{
    window = openPDFViewerWindow(requestFor(writePdf(QStringLiteral("a.pdf"), {{QStringLiteral("text")}})),
                                 services);
    delete window;
    QCoreApplication::processEvents();
    EXPECT_FALSE(clock.hasPendingCalls());
}
