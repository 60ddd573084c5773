#include "app/LibraryViewModel.h"
#include "store/ReservedTags.h"
#include "ui/GridFixture.h"

#include <QAccessible>

namespace
{
class PaperGridAccessible : public ::testing::Test, protected GridFixture
{
protected:
    PaperGridAccessible()
    {
        grid.resize(840, 700);
        grid.setAccessibleName(QStringLiteral("Papers"));
        activate(grid);
        QList<Paper> list = papers(100);
        list[1].authors = QStringLiteral("Ada");
        list[1].year = 1843;
        list[1].tags = {QLatin1String(kCurrentlyReadingTag)};
        grid.papers().setPapers(list);
    }

    QAccessibleInterface *list() { return QAccessible::queryAccessibleInterface(&grid); }
    QString nameOf(int row) { return list()->child(row)->text(QAccessible::Name); }

    PaperGrid grid{vm(), covers, CardKind::Paper};
};
} // namespace

TEST_F(PaperGridAccessible, IsAListOfCards)
{
    EXPECT_EQ(list()->role(), QAccessible::List);
    EXPECT_EQ(list()->text(QAccessible::Name), u"Papers");
    ASSERT_EQ(list()->childCount(), 100);
    QAccessibleInterface *card = list()->child(42);
    EXPECT_EQ(card->role(), QAccessible::ListItem);
    EXPECT_EQ(card->parent(), list());
    EXPECT_EQ(list()->indexOfChild(card), 42);
    EXPECT_EQ(list()->child(100), nullptr);
}

TEST_F(PaperGridAccessible, NamesACardByWhatItShows)
{
    EXPECT_EQ(nameOf(0), u"Paper 0");
    EXPECT_EQ(nameOf(1), u"Paper 1, Ada, 1843, currently reading");
}

TEST_F(PaperGridAccessible, SaysThatAFileIsMissing)
{
    nameOf(0); // asks the disk
    waitForArrival();
    EXPECT_EQ(nameOf(0), u"Paper 0, file missing");
}

TEST_F(PaperGridAccessible, TellsSelectionAndFocus)
{
    EXPECT_FALSE(list()->child(3)->state().selected);
    grid.setCurrentIndex(grid.papers().index(3));
    EXPECT_TRUE(list()->child(3)->state().selected);
    EXPECT_TRUE(list()->child(3)->state().focused);
    EXPECT_TRUE(list()->child(3)->state().selectable);
    EXPECT_FALSE(list()->child(2)->state().selected);
    EXPECT_EQ(list()->focusChild(), list()->child(3));
}

TEST_F(PaperGridAccessible, TellsWhereACardIs)
{
    const QRect card = list()->child(5)->rect();
    EXPECT_EQ(card.size(), grid.visualRect(grid.papers().index(5)).size());
    EXPECT_EQ(list()->childAt(card.center().x(), card.center().y()), list()->child(5));
    EXPECT_FALSE(list()->child(5)->state().offscreen);
    EXPECT_TRUE(list()->child(99)->state().offscreen);
}

TEST_F(PaperGridAccessible, OpensACardThatIsPressed)
{
    QSignalSpy openings(&grid, &PaperGrid::opened);
    QAccessibleActionInterface *actions = list()->child(4)->actionInterface();
    ASSERT_TRUE(actions);
    EXPECT_TRUE(actions->actionNames().contains(QAccessibleActionInterface::pressAction()));
    actions->doAction(QAccessibleActionInterface::pressAction());
    ASSERT_EQ(openings.size(), 1);
    EXPECT_EQ(openings.at(0).at(0).toInt(), 4);
    EXPECT_EQ(grid.selectedPaperId(), u"p4");
}

TEST_F(PaperGridAccessible, ForgetsTheCardsOfAFormerList)
{
    EXPECT_EQ(nameOf(7), u"Paper 7");
    grid.papers().setPapers(papers(100).mid(50));
    EXPECT_EQ(list()->childCount(), 50);
    EXPECT_EQ(nameOf(7), u"Paper 57");
}
