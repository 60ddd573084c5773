#include "reader/ReaderWindowFixture.h"

#include "reader/ReaderSidebar.h"

#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QSplitter>
#include <QToolBar>
#include <QToolButton>
#include <QTreeView>

namespace
{

class PDFViewerWindowTest : public ReaderWindowTest
{
protected:
    QString threePages() const
    {
        return writePdf(QStringLiteral("three.pdf"), {{QStringLiteral("first page")},
                                                      {QStringLiteral("we pay attention here")},
                                                      {QStringLiteral("third page")}});
    }

    /// Three pages as paper "p", indexed.
    PDFOpenRequest paper()
    {
        const QString path = threePages();
        addPaper(QStringLiteral("p"), path);
        library.addPage(QStringLiteral("p"), 1, "first page");
        library.addPage(QStringLiteral("p"), 2, "we pay attention here");
        library.addPage(QStringLiteral("p"), 3, "third page");
        PDFOpenRequest request = requestFor(path);
        request.paperId = QStringLiteral("p");
        return request;
    }

    QLineEdit &pageNumber() { return *find<QLineEdit>("pageNumber"); }
    void typePage(const QString &text)
    {
        pageNumber().setText(text);
        QTest::keyClick(&pageNumber(), Qt::Key_Return);
        rest();
    }
    void searchFor(const QString &text)
    {
        reader().searchText = text;
        clock.advance(std::chrono::milliseconds(400));
        awaitValue(reader().isSearching, false);
    }
};

} // namespace

TEST_F(PDFViewerWindowTest, IsThereAtOnceAndShowsItsDocumentWhenThatIsOpen)
{
    window = openPDFViewerWindow(requestFor(threePages()), services);
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(window->windowTitle(), u"three.pdf");
    awaitStage(Stage::Open); // which may be there before the window is
    EXPECT_EQ(reader().pageCount, 3);
    EXPECT_EQ(find<QLabel>("pageCount")->text(), u"of 3");
}

TEST_F(PDFViewerWindowTest, ArrivesAtThePassageLit)
{
    PDFOpenRequest request = requestFor(threePages());
    request.page = 2;
    request.highlightText = QStringLiteral("pay ...attention...");
    open(request);
    clock.advance(std::chrono::milliseconds(50));
    awaitValue(reader().hasSelection, true);
    rest();
    EXPECT_EQ(window->view().currentSelection()->string(), u"pay attention");
    EXPECT_EQ(reader().currentPage, 2);
    EXPECT_EQ(pageNumber().text(), u"2");
}

TEST_F(PDFViewerWindowTest, ArrivesWithTheHitsOfItsSearch)
{
    PDFOpenRequest request = paper();
    request.searchText = QStringLiteral("page");
    request.page = 3;
    open(request);
    awaitThat(reader().searchResults, [this] { return reader().searchResults.value().size() == 2; });
    const auto *hits = find<QListView>("hits");
    EXPECT_EQ(hits->model()->rowCount(), 2);
    EXPECT_EQ(hits->model()->index(1, 0).data().toString(), u"Page 3. third page");
    EXPECT_EQ(reader().currentHit, 1);
    EXPECT_EQ(find<ReaderSidebar>("readerSidebar")->pane(), ReaderSidebar::Pane::Search);
    EXPECT_EQ(find<QLineEdit>("readerSearchField")->text(), u"page");
}

TEST_F(PDFViewerWindowTest, CallsItsToolsByTheirNames)
{
    open(requestFor(threePages()));
    EXPECT_EQ(actions().back->text(), u"Back");
    EXPECT_EQ(actions().forward->text(), u"Forward");
    EXPECT_EQ(actions().zoomOut->text(), u"Zoom Out");
    EXPECT_EQ(actions().actualSize->text(), u"Actual Size");
    EXPECT_EQ(actions().zoomIn->text(), u"Zoom In");
    EXPECT_EQ(actions().bookmarkSelection->text(), u"Bookmark Selection");
    EXPECT_EQ(find<QLineEdit>("readerSearchField")->placeholderText(),
              u"Power Search (e.g. attention AND transformer*)");
    const auto *bar = find<QToolBar>("readerToolBar");
    EXPECT_FALSE(bar->isMovable());
    for (QAction *action : {actions().back, actions().forward, actions().zoomOut, actions().actualSize,
                            actions().zoomIn, actions().bookmarkSelection, actions().sidebar}) {
        EXPECT_TRUE(bar->widgetForAction(action)) << action->text().toStdString();
        EXPECT_FALSE(action->icon().isNull()) << action->text().toStdString();
    }
}

TEST_F(PDFViewerWindowTest, ZoomsAndFits)
{
    openAndArrive(requestFor(threePages()));
    EXPECT_EQ(window->view().fit(), Viewpoint::Fit::Width);
    actions().actualSize->trigger();
    rest();
    EXPECT_DOUBLE_EQ(window->view().zoom(), 1);
    actions().zoomIn->trigger();
    rest();
    EXPECT_GT(window->view().zoom(), 1);
    actions().zoomOut->trigger();
    actions().zoomOut->trigger();
    rest();
    EXPECT_LT(window->view().zoom(), 1);
    actions().fitPage->trigger();
    EXPECT_EQ(window->view().fit(), Viewpoint::Fit::Page);
    actions().fitWidth->trigger();
    EXPECT_EQ(window->view().fit(), Viewpoint::Fit::Width);
}

TEST_F(PDFViewerWindowTest, GoesToThePageThatIsTypedAndBack)
{
    openAndArrive(requestFor(threePages()));
    typePage(QStringLiteral("3"));
    EXPECT_EQ(reader().currentPage, 3);
    EXPECT_TRUE(actions().back->isEnabled());
    EXPECT_FALSE(actions().forward->isEnabled());
    actions().back->trigger();
    rest();
    EXPECT_EQ(reader().currentPage, 1);
    EXPECT_EQ(pageNumber().text(), u"1");
    EXPECT_TRUE(actions().forward->isEnabled());
    actions().forward->trigger();
    rest();
    EXPECT_EQ(reader().currentPage, 3);
}

TEST_F(PDFViewerWindowTest, StaysOnItsPageForTextThatIsNoPage)
{
    openAndArrive(requestFor(threePages()));
    typePage(QStringLiteral("2"));
    for (const char *text : {"0", "-3", "4", "abc"}) {
        typePage(QLatin1String(text));
        EXPECT_EQ(reader().currentPage, 2) << text;
    }
}

TEST_F(PDFViewerWindowTest, ShowsThePagesOwnLabelBesideItsNumber)
{
    const QString path = library.folder.write(QStringLiteral("labels.pdf"),
                                              PdfBuilder()
                                                  .page({QStringLiteral("a")})
                                                  .page({QStringLiteral("b")})
                                                  .catalogue("/PageLabels << /Nums [0 << /S /r /St 4 >>] >>")
                                                  .build());
    openAndArrive(requestFor(path));
    awaitThat(reader().pageLabels, [this] { return !reader().pageLabels.value().isEmpty(); });
    EXPECT_EQ(find<QLabel>("pageCount")->text(), u"(iv) of 2");
    typePage(QStringLiteral("2"));
    EXPECT_EQ(find<QLabel>("pageCount")->text(), u"(v) of 2");
}

TEST_F(PDFViewerWindowTest, KeepsTheToolBarInPlaceWhilePagesWithLongerLabelsGoBy)
{
    const QString path = library.folder.write(
        QStringLiteral("labels.pdf"), PdfBuilder()
                                          .page({QStringLiteral("a")})
                                          .page({QStringLiteral("b")})
                                          .catalogue("/PageLabels << /Nums [0 << /S /D >> 1 << /S /D /P "
                                                     "(Appendix B-) >>] >>")
                                          .build());
    openAndArrive(requestFor(path));
    awaitThat(reader().pageLabels, [this] { return !reader().pageLabels.value().isEmpty(); });
    const int before = find<QWidget>("pageField")->sizeHint().width();
    typePage(QStringLiteral("2"));
    EXPECT_EQ(find<QLabel>("pageCount")->text(), u"(Appendix B-1) of 2");
    EXPECT_EQ(find<QWidget>("pageField")->sizeHint().width(), before);
}

TEST_F(PDFViewerWindowTest, GoesWhereAnOutlineItemLeads)
{
    const QByteArray third = PdfBuilder::pageReference(2);
    const QString path = library.folder.write(
        QStringLiteral("outline.pdf"),
        PdfBuilder()
            .page({QStringLiteral("a")})
            .page({QStringLiteral("b")})
            .page({QStringLiteral("c")})
            .catalogue("/Outlines 100000 0 R")
            .object(100'000, "<< /Type /Outlines /First 100001 0 R /Last 100001 0 R /Count 1 >>")
            .object(100'001, "<< /Title (The end) /Parent 100000 0 R /Dest [" + third + " /Fit] >>")
            .build());
    openAndArrive(requestFor(path));
    awaitThat(reader().outline, [this] { return !reader().outline.value().isEmpty(); });
    auto *outline = find<QTreeView>("outline");
    const QModelIndex item = outline->model()->index(0, 0);
    EXPECT_EQ(item.data().toString(), u"The end");
    QTest::mouseClick(outline->viewport(), Qt::LeftButton, {}, outline->visualRect(item).center());
    rest();
    EXPECT_EQ(reader().currentPage, 3);
    actions().back->trigger();
    rest();
    EXPECT_EQ(reader().currentPage, 1);
}

TEST_F(PDFViewerWindowTest, SaysThatADocumentHasNoOutline)
{
    open(requestFor(threePages()));
    const auto *pane = find<QWidget>("outlinePane");
    EXPECT_EQ(pane->findChild<QLabel *>(QStringLiteral("hint"))->text(), u"This document has no outline.");
}

TEST_F(PDFViewerWindowTest, FocusesTheSearchFieldByControlF)
{
    open(paper());
    QTest::keyClick(&window->view(), Qt::Key_F, Qt::ControlModifier);
    auto *field = find<QLineEdit>("readerSearchField");
    EXPECT_TRUE(field->hasFocus());
    QTest::keyClicks(field, QStringLiteral("attention"));
    EXPECT_EQ(reader().searchText.value(), u"attention");
    QTest::keyClick(field, Qt::Key_Return);
    awaitThat(reader().searchResults, [this] { return !reader().searchResults.value().isEmpty(); });
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(reader().currentHit, 0);
    QTest::keyClick(field, Qt::Key_Escape);
    EXPECT_TRUE(field->text().isEmpty());
    EXPECT_TRUE(window->view().hasFocus());
}

TEST_F(PDFViewerWindowTest, StepsThroughTheHitsByF3)
{
    openAndArrive(paper());
    searchFor(QStringLiteral("page"));
    QTest::keyClick(&window->view(), Qt::Key_F3);
    EXPECT_EQ(reader().currentHit, 0);
    QTest::keyClick(&window->view(), Qt::Key_F3);
    EXPECT_EQ(reader().currentHit, 1);
    awaitValue(reader().currentPage, qint64(3));
    EXPECT_EQ(window->view().currentSelection()->string(), u"third page");
    QTest::keyClick(&window->view(), Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(reader().currentHit, 0);
    EXPECT_EQ(find<QListView>("hits")->currentIndex().row(), 0);
}

TEST_F(PDFViewerWindowTest, OpensTheHitThatIsClicked)
{
    openAndArrive(paper());
    searchFor(QStringLiteral("attention"));
    auto *hits = find<QListView>("hits");
    QTest::mouseClick(hits->viewport(), Qt::LeftButton, {},
                      hits->visualRect(hits->model()->index(0, 0)).center());
    awaitValue(reader().hasSelection, true);
    // The words of its snippet, without those of one or two letters.
    EXPECT_EQ(window->view().currentSelection()->string(), u"pay attention here");
}

TEST_F(PDFViewerWindowTest, SaysWhyItFindsNothing)
{
    openAndArrive(paper());
    const auto hint = [this] {
        return find<QWidget>("searchPane")->findChild<QLabel *>(QStringLiteral("hint"))->text();
    };
    EXPECT_EQ(hint(), u"Type into the search field to search this paper.");
    searchFor(QStringLiteral("absent"));
    EXPECT_EQ(hint(), u"Nothing found");
    open(requestFor(writePdf(QStringLiteral("stray.pdf"), {{QStringLiteral("a")}})));
    EXPECT_EQ(hint(), u"Only papers of the library can be searched.");
}

TEST_F(PDFViewerWindowTest, SelectsThePageNumberByControlG)
{
    openAndArrive(requestFor(threePages()));
    QTest::keyClick(&window->view(), Qt::Key_G, Qt::ControlModifier);
    EXPECT_TRUE(pageNumber().hasFocus());
    EXPECT_EQ(pageNumber().selectedText(), u"1");
    QTest::keyClicks(&pageNumber(), QStringLiteral("3"));
    QTest::keyClick(&pageNumber(), Qt::Key_Escape);
    EXPECT_EQ(pageNumber().text(), u"1");
    EXPECT_TRUE(window->view().hasFocus());
}

TEST_F(PDFViewerWindowTest, ShowsTheLibraryByControlL)
{
    open(requestFor(threePages()));
    QTest::keyClick(&window->view(), Qt::Key_L, Qt::ControlModifier);
    EXPECT_EQ(libraryShown, 1);
}

TEST_F(PDFViewerWindowTest, RemembersItsSidebarAndDarkPages)
{
    const QString path = threePages();
    open(requestFor(path));
    auto *splitter = window->findChild<QSplitter *>();
    EXPECT_EQ(splitter->sizes().first(), 260);
    EXPECT_FALSE(window->view().isDarkMode());
    splitter->setSizes({300, 800});
    QTest::keyClick(&window->view(), Qt::Key_F9);
    EXPECT_FALSE(isShown("readerSidebar"));
    actions().darkMode->trigger();
    window->close();

    open(requestFor(path));
    EXPECT_FALSE(isShown("readerSidebar"));
    EXPECT_FALSE(actions().sidebar->isChecked());
    EXPECT_TRUE(window->view().isDarkMode());
    EXPECT_TRUE(actions().darkMode->isChecked());
    actions().sidebar->trigger();
    EXPECT_TRUE(isShown("readerSidebar"));
    QApplication::sendPostedEvents();
    EXPECT_EQ(window->findChild<QSplitter *>()->sizes().first(), 300);
}

TEST_F(PDFViewerWindowTest, TellsTheSessionItsPageAndItsEnd)
{
    PDFOpenRequest request = requestFor(threePages());
    request.highlightText = QStringLiteral("first");
    openAndArrive(request);
    awaitValue(reader().hasSelection, true);
    QList<PDFOpenRequest> changes;
    QObject::connect(window, &PDFViewerWindow::requestChanged, window,
                     [&](const PDFOpenRequest &changed) { changes.append(changed); });
    typePage(QStringLiteral("3"));
    ASSERT_FALSE(changes.isEmpty());
    EXPECT_EQ(changes.last().id, request.id);
    EXPECT_EQ(changes.last().page, 3);
    EXPECT_FALSE(changes.last().highlightText); // it is not on that page
    typePage(QStringLiteral("1"));
    EXPECT_EQ(changes.last().highlightText, request.highlightText);

    QSignalSpy closed(window, &PDFViewerWindow::closed);
    window->close();
    ASSERT_EQ(closed.size(), 1);
    EXPECT_EQ(closed.first().first().toUuid(), request.id);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(window);
}

TEST_F(PDFViewerWindowTest, FindsThePaperOfAFileInTheLibrary)
{
    PDFOpenRequest request = paper();
    request.paperId.reset();
    window = openPDFViewerWindow(request, services);
    awaitValue(reader().isInLibrary, true);
    EXPECT_EQ(window->request().paperId, QStringLiteral("p"));
    EXPECT_EQ(window->windowTitle(), u"Title of p");
    awaitStage(Stage::Open);
    searchFor(QStringLiteral("attention"));
    EXPECT_EQ(reader().searchResults.value().size(), 1);
}

TEST_F(PDFViewerWindowTest, TurnsAndDarkensItsPages)
{
    openAndArrive(requestFor(threePages()));
    const QSizeF upright = window->view().viewpoint().layout().size(0);
    actions().rotateRight->trigger();
    EXPECT_EQ(window->view().viewpoint().layout().size(0), upright.transposed());
    actions().rotateLeft->trigger();
    EXPECT_EQ(window->view().viewpoint().layout().size(0), upright);
    actions().darkMode->trigger();
    EXPECT_TRUE(window->view().isDarkMode());
}

TEST_F(PDFViewerWindowTest, OffersTheRestInAMenu)
{
    open(requestFor(threePages()));
    const QMenu *more = actions().more->menu();
    EXPECT_TRUE(more->actions().contains(actions().print));
    EXPECT_TRUE(more->actions().contains(actions().fullScreen));
}
