#include "ui/PaperGridItem.h"
#include "app/LibraryViewModel.h"
#include "store/ReservedTags.h"
#include "ui/GridFixture.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>

namespace
{
class PaperGridItemTest : public ::testing::Test, protected GridFixture
{
protected:
    PaperGridItemTest()
    {
        grid.resize(840, 700);
        activate(grid);
    }

    /// One paper of the library, shown and with its menu open.
    QMenu *openMenu(const QStringList &tags)
    {
        shown = addPaper(QStringLiteral("a"), QStringLiteral("On \"Time\""), tags);
        load();
        grid.papers().setPapers(vm().papers);
        const QPoint centre = grid.visualRect(grid.papers().index(0)).center();
        QContextMenuEvent event(QContextMenuEvent::Mouse, centre, grid.viewport()->mapToGlobal(centre));
        QApplication::sendEvent(grid.viewport(), &event);
        return grid.findChild<QMenu *>(QStringLiteral("paperMenu"));
    }

    static QStringList texts(const QMenu &menu)
    {
        QStringList texts;
        for (const QAction *action : menu.actions())
            texts.append(action->isSeparator() ? QStringLiteral("-") : action->text());
        return texts;
    }
    static void trigger(const QMenu *menu, const char *name)
    {
        menu->findChild<QAction *>(QLatin1String(name))->trigger();
    }
    QMessageBox *alert() const { return grid.findChild<QMessageBox *>(QStringLiteral("removePaperAlert")); }
    static QPushButton *button(const QMessageBox *box, const QString &text)
    {
        for (auto *button : box->findChildren<QPushButton *>()) {
            if (button->text() == text)
                return button;
        }
        return nullptr;
    }
    bool isReading() { return paper(shown.id)->tags.contains(QLatin1String(kCurrentlyReadingTag)); }

    Paper shown;
    PaperGrid grid{vm(), covers, CardKind::Paper};
};
} // namespace

TEST_F(PaperGridItemTest, OffersReadingAndRemoving)
{
    EXPECT_EQ(texts(*openMenu({})),
              (QStringList{QStringLiteral("Mark as Currently Reading"), QStringLiteral("-"),
                           QStringLiteral("Remove from Library")}));
}

TEST_F(PaperGridItemTest, OffersToStopReadingAPaperThatIsBeingRead)
{
    EXPECT_EQ(texts(*openMenu({QLatin1String(kCurrentlyReadingTag)})).first(), u"Stop Reading");
}

TEST_F(PaperGridItemTest, OffersToRemoveFromTheSelectedTag)
{
    vm().currentSidebarItem = SidebarItem::ofTag(QStringLiteral("R&D"));
    const QMenu *menu = openMenu({QStringLiteral("R&D")});
    EXPECT_EQ(texts(*menu).at(1), u"Remove from R&&D") << "a single & would mark a key";
    EXPECT_FALSE(menu->actions().at(1)->icon().isNull());
    trigger(menu, "removeFromTag");
    // Not for the tag's empty list: it may have come and gone, with the tag, before the wait begins.
    waitUntil(vm().papers,
              [](const QList<Paper> &papers) { return !papers.isEmpty() && papers.first().tags.isEmpty(); });
    EXPECT_EQ(paper(shown.id)->tags, QStringList());
}

TEST_F(PaperGridItemTest, MarksAPaperAsCurrentlyReadAndBack)
{
    trigger(openMenu({}), "toggleReading");
    waitUntil(vm().papers, [](const QList<Paper> &papers) { return !papers.first().tags.isEmpty(); });
    EXPECT_TRUE(isReading());
}

TEST_F(PaperGridItemTest, StopsReading)
{
    trigger(openMenu({QLatin1String(kCurrentlyReadingTag)}), "toggleReading");
    waitUntil(vm().papers, [](const QList<Paper> &papers) { return papers.first().tags.isEmpty(); });
    EXPECT_FALSE(isReading());
}

TEST_F(PaperGridItemTest, SelectsThePaperWhoseMenuOpens)
{
    openMenu({});
    EXPECT_EQ(grid.selectedPaperId(), u"a");
}

TEST_F(PaperGridItemTest, AsksBeforeRemovingWithTheTitleInQuotes)
{
    trigger(openMenu({}), "removeFromLibrary");
    const QMessageBox *asking = alert();
    ASSERT_TRUE(asking);
    EXPECT_EQ(asking->text(), u"Remove \"On \"Time\"\" from your library?");
    EXPECT_EQ(asking->informativeText(),
              u"This will delete the paper's metadata, tags, and AI index. The PDF "
              u"file itself will not be deleted.");
    EXPECT_EQ(asking->buttons().size(), 2);
    EXPECT_TRUE(button(asking, QStringLiteral("Cancel")));
    EXPECT_TRUE(button(asking, QStringLiteral("Remove")));
    EXPECT_EQ(asking->textFormat(), Qt::PlainText);
    EXPECT_EQ(asking->windowModality(), Qt::WindowModal);
}

TEST_F(PaperGridItemTest, KeepsThePaperOnCancel)
{
    trigger(openMenu({}), "removeFromLibrary");
    QTest::mouseClick(button(alert(), QStringLiteral("Cancel")), Qt::LeftButton);
    EXPECT_FALSE(alert() && alert()->isVisible());
    EXPECT_TRUE(paper(shown.id));
    EXPECT_EQ(vm().papers.value().size(), 1);
}

TEST_F(PaperGridItemTest, RemovesThePaperOnRemove)
{
    trigger(openMenu({}), "removeFromLibrary");
    QTest::mouseClick(button(alert(), QStringLiteral("Remove")), Qt::LeftButton);
    waitUntil(vm().papers, [](const QList<Paper> &papers) { return papers.isEmpty(); });
    EXPECT_FALSE(paper(shown.id));
}

TEST_F(PaperGridItemTest, AsksOnlyOnceAtATime)
{
    const QMenu *menu = openMenu({});
    EXPECT_FALSE(grid.item(0).showingDeleteConfirmation);
    trigger(menu, "removeFromLibrary");
    EXPECT_TRUE(grid.item(0).showingDeleteConfirmation);
    trigger(menu, "removeFromLibrary");
    EXPECT_EQ(grid.findChildren<QMessageBox *>(QStringLiteral("removePaperAlert")).size(), 1);
}

TEST_F(PaperGridItemTest, OpensItsMenuByKeyAtTheCurrentCard)
{
    show(papers(3));
    grid.papers().setPapers(papers(3));
    grid.setCurrentIndex(grid.papers().index(2));
    QContextMenuEvent event(QContextMenuEvent::Keyboard, {0, 0}, {0, 0});
    QApplication::sendEvent(grid.viewport(), &event);
    EXPECT_TRUE(grid.findChild<QMenu *>(QStringLiteral("paperMenu")));
    EXPECT_EQ(grid.selectedPaperId(), u"p2");
}
