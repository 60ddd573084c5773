// What leads a reader away from a place, and brings it back there.
#include "reader/ReaderWindowFixture.h"

#include "reader/HitMarkStrip.h"

#include <QListView>
#include <QTreeView>

namespace
{

class PDFViewerWindowHistory : public ReaderWindowTest
{
protected:
    static constexpr qint64 kPassagePage = 4;

    PDFViewerWindowHistory()
    {
        const QByteArray last = PdfBuilder::pageReference(4);
        PdfBuilder pdf;
        pdf.page({.lines = {QStringLiteral("contents")},
                  .mediaBox = PdfBox{0, 0, 600, 800},
                  .entries = "/Annots [<< /Type /Annot /Subtype /Link /Rect [0 0 600 800] /Dest [" + last +
                             " /Fit] >>]"});
        for (int page = 2; page <= 5; ++page)
            pdf.page({page == kPassagePage ? QStringLiteral("a lemma on trees") : QStringLiteral("nothing")});
        pdf.catalogue("/Outlines 100000 0 R")
            .object(100'000, "<< /Type /Outlines /First 100001 0 R /Last 100001 0 R /Count 1 >>")
            .object(100'001, "<< /Title (The end) /Parent 100000 0 R /Dest [" + last + " /Fit] >>");
        path = library.folder.write(QStringLiteral("paper.pdf"), pdf.build());
        addPaper(QStringLiteral("p"), path);
        library.addPage(QStringLiteral("p"), kPassagePage, "a lemma on trees");
    }

    void SetUp() override
    {
        PDFOpenRequest request = requestFor(path);
        request.paperId = QStringLiteral("p");
        openAndArrive(request);
    }

    /// Expects that the reader comes to be on that page, and one step back where it was.
    void expectJumpTo(qint64 pageNumber)
    {
        awaitValue(reader().currentPage, pageNumber);
        rest();
        ASSERT_TRUE(actions().back->isEnabled());
        actions().back->trigger();
        rest();
        EXPECT_EQ(reader().currentPage, 1);
        EXPECT_FALSE(actions().back->isEnabled());
    }

    void findTrees()
    {
        reader().searchText = QStringLiteral("trees");
        clock.advance(std::chrono::milliseconds(400));
        awaitThat(reader().searchResults, [this] { return !reader().searchResults.value().isEmpty(); });
    }

    static void click(QAbstractItemView &list)
    {
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {},
                          list.visualRect(list.model()->index(0, 0)).center());
    }

    QString path;
};

} // namespace

TEST_F(PDFViewerWindowHistory, RemembersWhereAnOutlineItemWasClicked)
{
    awaitThat(reader().outline, [this] { return !reader().outline.value().isEmpty(); });
    click(*find<QTreeView>("outline"));
    expectJumpTo(5);
}

TEST_F(PDFViewerWindowHistory, RemembersWhereALinkWasClicked)
{
    QWidget *pages = window->view().viewport();
    while (!window->view().contents().links(0)) // they come in their turn
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    QTest::mouseClick(pages, Qt::LeftButton, {}, pages->rect().center());
    expectJumpTo(5);
}

TEST_F(PDFViewerWindowHistory, RemembersWhereAPageNumberWasTyped)
{
    reader().goToPageText(QStringLiteral("3"));
    expectJumpTo(3);
}

TEST_F(PDFViewerWindowHistory, RemembersWhereAHitWasOpened)
{
    findTrees();
    click(*find<QListView>("hits"));
    expectJumpTo(kPassagePage);
}

TEST_F(PDFViewerWindowHistory, RemembersWhereAMarkBesideTheScrollBarWasClicked)
{
    findTrees();
    auto *marks = find<HitMarkStrip>("hitMarks");
    ASSERT_TRUE(marks->isVisible());
    QTest::mouseClick(marks, Qt::LeftButton, {}, marks->markOf(kPassagePage - 1).center());
    EXPECT_EQ(reader().currentHit, 0);
    expectJumpTo(kPassagePage);
}

TEST_F(PDFViewerWindowHistory, RemembersWhereABookmarkWasOpened)
{
    const Bookmark bookmark{.id = newBookmarkId(),
                            .paperId = QStringLiteral("p"),
                            .text = QStringLiteral("lemma on trees"),
                            .page = kPassagePage,
                            .label = {},
                            .createdAt = QStringLiteral("2024-03-05T14:07:09Z")};
    EXPECT_TRUE(library.service.createBookmark(bookmark).result());
    awaitThat(reader().bookmarks, [this] { return !reader().bookmarks.value().isEmpty(); });
    find<QTabWidget>("readerSidebar")->setCurrentIndex(2);
    click(*find<QListView>("bookmarks"));
    expectJumpTo(kPassagePage);
}

TEST_F(PDFViewerWindowHistory, RemembersNothingOfScrolling)
{
    QTest::keyClick(&window->view(), Qt::Key_End);
    rest();
    EXPECT_EQ(reader().currentPage, 5);
    EXPECT_FALSE(actions().back->isEnabled());
}
