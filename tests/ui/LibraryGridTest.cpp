#include "ui/LibraryGrid.h"
#include "app/LibraryViewModel.h"
#include "ui/GridFixture.h"

#include <QScrollBar>

namespace
{
class LibraryGridTest : public ::testing::Test, protected GridFixture
{
protected:
    LibraryGridTest()
    {
        view.resize(840, 700);
        activate(view);
    }

    PaperGrid &grid() const { return *view.findChild<PaperGrid *>(); }
    QPoint centre(int row) const { return grid().visualRect(grid().papers().index(row)).center(); }
    bool isInSight(int row) const
    {
        return grid().viewport()->rect().contains(grid().visualRect(grid().papers().index(row)));
    }

    LibraryGrid view{vm(), covers, recordOpening()};
};
} // namespace

TEST_F(LibraryGridTest, ShowsTheFilteredPapers)
{
    show(papers(12));
    vm().filteredPapers = papers(12).mid(3, 2);
    ASSERT_EQ(grid().papers().rowCount(), 2);
    EXPECT_EQ(grid().papers().paper(0).id, u"p3");
}

TEST_F(LibraryGridTest, SelectsForTheWholeWindow)
{
    show(papers(5));
    QTest::mouseClick(grid().viewport(), Qt::LeftButton, {}, centre(2));
    ASSERT_TRUE(vm().selectedPaper.value());
    EXPECT_EQ(*vm().selectedPaper.value(), papers(5).at(2));
    QTest::keyClick(&grid(), Qt::Key_Right);
    EXPECT_EQ(vm().selectedPaper.value()->id, u"p3");
    QTest::mouseClick(grid().viewport(), Qt::LeftButton, {}, {4, 4});
    EXPECT_FALSE(vm().selectedPaper.value());
}

TEST_F(LibraryGridTest, ShowsWhatIsSelectedElsewhere)
{
    show(papers(5));
    vm().select(papers(5).at(4));
    EXPECT_EQ(grid().currentIndex().row(), 4);
    EXPECT_TRUE(grid().item(4).isSelected);
    vm().select(std::nullopt);
    EXPECT_FALSE(grid().selectionModel()->hasSelection());
}

TEST_F(LibraryGridTest, KeepsTheSelectedPaperWhileAFilterHidesIt)
{
    show(papers(5));
    vm().select(papers(5).at(4));
    vm().filteredPapers = papers(2);
    EXPECT_TRUE(vm().selectedPaper.value());
    vm().filteredPapers = papers(5);
    EXPECT_TRUE(grid().selectionModel()->isRowSelected(4, {}));
}

TEST_F(LibraryGridTest, OpensTheReaderOnADoubleClickedPaper)
{
    show(papers(5));
    QTest::mouseDClick(grid().viewport(), Qt::LeftButton, {}, centre(1));
    ASSERT_EQ(opened.size(), 1);
    EXPECT_EQ(opened.at(0).url, QUrl(QStringLiteral("file:///papers/1.pdf")));
    EXPECT_EQ(opened.at(0).paperId, QStringLiteral("p1"));
    EXPECT_FALSE(opened.at(0).page);
    EXPECT_FALSE(opened.at(0).searchText);
}

TEST_F(LibraryGridTest, ScrollsToAPaperAndClearsTheWish)
{
    show(papers(400));
    vm().scrollToId = QStringLiteral("p300");
    EXPECT_TRUE(isInSight(300));
    EXPECT_FALSE(vm().scrollToId.value());
}

TEST_F(LibraryGridTest, ScrollsToAPaperThatIsYetToBeLoaded)
{
    vm().isLoading = true;
    vm().scrollToId = QStringLiteral("p300");
    EXPECT_TRUE(vm().scrollToId.value());
    show(papers(400));
    EXPECT_TRUE(isInSight(300));
    EXPECT_FALSE(vm().scrollToId.value());
}

TEST_F(LibraryGridTest, ForgetsAWishForAPaperThatIsNotThere)
{
    show(papers(4));
    vm().scrollToId = QStringLiteral("nobody");
    EXPECT_FALSE(vm().scrollToId.value());
}

TEST_F(LibraryGridTest, KeepsItsPlaceWhenTheSamePapersAreReloaded)
{
    show(papers(400));
    grid().verticalScrollBar()->setValue(2000);
    show(papers(399));
    EXPECT_EQ(grid().verticalScrollBar()->value(), 2000);
}

TEST_F(LibraryGridTest, StartsAnotherListAtItsTop)
{
    show(papers(400));
    grid().verticalScrollBar()->setValue(2000);
    vm().queryText = QStringLiteral("title:paper");
    vm().filteredPapers = papers(200);
    EXPECT_EQ(grid().verticalScrollBar()->value(), 0);
}

TEST_F(LibraryGridTest, LooksForFilesAgainAfterALoad)
{
    QList<Paper> one = papers(1);
    one[0].filepath = library.folder.path(QStringLiteral("moved.pdf"));
    show(one);
    waitForArrival();
    EXPECT_TRUE(grid().isFileMissing(0));
    library.folder.write(QStringLiteral("moved.pdf"), "x");
    vm().isLoading = true;
    vm().isLoading = false;
    waitForArrival();
    EXPECT_FALSE(grid().isFileMissing(0));
}
