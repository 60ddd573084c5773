#include "ui/Sidebar.h"

#include "ui/Drag.h"
#include "ui/PaperListModel.h"
#include "ui/SidebarModel.h"
#include "ui/WindowFixture.h"

#include <QMessageBox>
#include <QToolButton>
#include <QTreeView>
#include <gtest/gtest.h>

namespace
{
class SidebarTest : public ::testing::Test, public WindowFixture
{
protected:
    SidebarTest()
    {
        addPaper(QStringLiteral("p1"), QStringLiteral("Light"), {QStringLiteral("optics")});
        addPaper(QStringLiteral("p2"), QStringLiteral("Waves"),
                 {QStringLiteral("optics"), QStringLiteral("sea"), QStringLiteral("_currently_reading")});
        load();
        openWindow();
        view = find<QTreeView>("sidebarView");
        rows = static_cast<SidebarModel *>(view->model());
    }

    QModelIndex row(const SidebarItem &item) const { return rows->indexOf(item); }
    QModelIndex tagRow(const QString &tag) const { return row(SidebarItem::ofTag(tag)); }
    QPoint middleOf(const QModelIndex &index) const { return view->visualRect(index).center(); }
    void click(const QModelIndex &index)
    {
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, middleOf(index));
    }
    QMenu *menuAt(QPoint position)
    {
        Q_EMIT view->customContextMenuRequested(position);
        return find<QMenu>("sidebarMenu");
    }

    QTreeView *view = nullptr;
    SidebarModel *rows = nullptr;
};

const SidebarItem kReading{SidebarItem::Kind::CurrentlyReading, {}};
const SidebarItem kRecent{SidebarItem::Kind::RecentlyImported, {}};

std::unique_ptr<QMimeData> card(const QString &paperId)
{
    auto content = std::make_unique<QMimeData>();
    content->setData(QLatin1String(kPaperIdsMimeType), paperId.toUtf8());
    return content;
}

QStringList rowsUnder(const SidebarModel *rows, const QModelIndex &section)
{
    QStringList texts;
    for (int row = 0; row < rows->rowCount(section); ++row)
        texts.append(rows->index(row, 0, section).data().toString());
    return texts;
}
} // namespace

TEST_F(SidebarTest, ListsTheLibraryAndTheTags)
{
    EXPECT_EQ(rowsUnder(rows, {}), (QStringList{QStringLiteral("Library"), QStringLiteral("Smart Tags")}));
    EXPECT_EQ(rowsUnder(rows, rows->section(SidebarModel::Library)),
              (QStringList{QStringLiteral("All Papers"), QStringLiteral("Currently Reading"),
                           QStringLiteral("Recently Imported")}));
    EXPECT_EQ(rowsUnder(rows, rows->section(SidebarModel::SmartTags)),
              (QStringList{QStringLiteral("optics"), QStringLiteral("sea")}))
        << "the tag of papers being read is none of the person's";
}

TEST_F(SidebarTest, ShowsASymbolForEachRowOfTheLibrary)
{
    for (const SidebarItem &item : {SidebarItem(), kReading, kRecent})
        EXPECT_FALSE(row(item).data(Qt::DecorationRole).value<QIcon>().isNull());
}

TEST_F(SidebarTest, CountsThePapersOfEachRow)
{
    EXPECT_EQ(row({}).data(SidebarModel::CountRole), 2);
    EXPECT_EQ(row(kReading).data(SidebarModel::CountRole), 1);
    EXPECT_EQ(row(kRecent).data(SidebarModel::CountRole), 0);
    EXPECT_EQ(tagRow(QStringLiteral("optics")).data(SidebarModel::CountRole), 2);
    EXPECT_EQ(tagRow(QStringLiteral("sea")).data(Qt::AccessibleTextRole), QStringLiteral("sea, 1 paper"));
    EXPECT_FALSE(rows->section(SidebarModel::Library).data(SidebarModel::CountRole).isValid());
}

TEST_F(SidebarTest, SelectsWhatIsClicked)
{
    EXPECT_EQ(view->currentIndex(), row({}));
    click(tagRow(QStringLiteral("sea")));
    EXPECT_EQ(vm().currentSidebarItem.value(), SidebarItem::ofTag(QStringLiteral("sea")));
    click(row(kReading));
    EXPECT_EQ(vm().currentSidebarItem.value(), kReading);
}

TEST_F(SidebarTest, FollowsTheViewModel)
{
    vm().currentSidebarItem = SidebarItem::ofTag(QStringLiteral("optics"));
    EXPECT_EQ(view->currentIndex(), tagRow(QStringLiteral("optics")));
    vm().currentSidebarItem = SidebarItem::ofTag(QStringLiteral("unheard of"));
    EXPECT_FALSE(view->currentIndex().isValid());
}

TEST_F(SidebarTest, PassesOverTheHeadingsWithTheArrowKeys)
{
    vm().currentSidebarItem = kRecent;
    QTest::keyClick(view, Qt::Key_Down);
    EXPECT_EQ(vm().currentSidebarItem.value(), SidebarItem::ofTag(QStringLiteral("optics")));
    QTest::keyClick(view, Qt::Key_Up);
    EXPECT_EQ(vm().currentSidebarItem.value(), kRecent);
}

TEST_F(SidebarTest, KeepsItsSelectionWhenTagsComeAndGo)
{
    vm().currentSidebarItem = SidebarItem::ofTag(QStringLiteral("sea"));
    vm().allTags = QStringList{QStringLiteral("acoustics"), QStringLiteral("sea"), QStringLiteral("snow")};
    EXPECT_EQ(vm().currentSidebarItem.value(), SidebarItem::ofTag(QStringLiteral("sea")));
    EXPECT_EQ(view->currentIndex(), tagRow(QStringLiteral("sea")));
    vm().allTags = QStringList{QStringLiteral("acoustics")};
    EXPECT_EQ(vm().currentSidebarItem.value(), SidebarItem::ofTag(QStringLiteral("sea")))
        << "a neighbour must not be selected in its place";
    vm().allTags = QStringList{QStringLiteral("acoustics"), QStringLiteral("sea")};
    EXPECT_EQ(view->currentIndex(), tagRow(QStringLiteral("sea")));
}

TEST_F(SidebarTest, FollowsARenamedTag)
{
    click(tagRow(QStringLiteral("sea")));
    vm().renameTag(QStringLiteral("sea"), QStringLiteral("ocean"));
    waitUntil(vm().allTags, [](const QStringList &tags) { return tags.contains(QStringLiteral("ocean")); });
    waitUntil(vm().currentSidebarItem, SidebarItem::ofTag(QStringLiteral("ocean")));
    EXPECT_EQ(view->currentIndex(), tagRow(QStringLiteral("ocean")));
}

TEST_F(SidebarTest, ChangesOnlyTheRowsThatDiffer)
{
    QSignalSpy removed(rows, &QAbstractItemModel::rowsRemoved);
    QSignalSpy inserted(rows, &QAbstractItemModel::rowsInserted);
    vm().allTags = QStringList{QStringLiteral("optics"), QStringLiteral("quanta"), QStringLiteral("sea")};
    EXPECT_EQ(removed.size(), 0);
    ASSERT_EQ(inserted.size(), 1);
    EXPECT_EQ(inserted.first().at(1), 1);
    EXPECT_EQ(inserted.first().at(2), 1);
}

TEST_F(SidebarTest, HoldsTwoThousandTags)
{
    QStringList tags;
    for (int i = 0; i < 2000; ++i)
        tags.append(QStringLiteral("tag %1").arg(i, 4, 10, QLatin1Char('0')));
    vm().allTags = tags;
    EXPECT_EQ(rows->rowCount(rows->section(SidebarModel::SmartTags)), 2000);
    vm().currentSidebarItem = SidebarItem::ofTag(tags.last());
    EXPECT_TRUE(view->viewport()->rect().intersects(view->visualRect(tagRow(tags.last()))))
        << "what is selected is brought into sight";
}

TEST_F(SidebarTest, OffersToRenameAndDeleteATag)
{
    QMenu *menu = menuAt(middleOf(tagRow(QStringLiteral("sea"))));
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(textsOf(menu), (QStringList{QStringLiteral("Rename Tag"), QStringLiteral("Delete Tag")}));
    EXPECT_FALSE(menu->actions().at(0)->icon().isNull());
    EXPECT_FALSE(menu->actions().at(1)->icon().isNull());
    menu->actions().at(0)->trigger();
    EXPECT_NE(find<QDialog>("renameTagAlert"), nullptr);
}

TEST_F(SidebarTest, AsksBeforeItDeletesATag)
{
    menuAt(middleOf(tagRow(QStringLiteral("sea"))))->actions().at(1)->trigger();
    ASSERT_NE(find<QMessageBox>("deleteTagAlert"), nullptr);
    EXPECT_TRUE(find<QMessageBox>("deleteTagAlert")->informativeText().contains(QStringLiteral("\"sea\"")));
}

TEST_F(SidebarTest, HasNoMenuOnTheLibrarysRows)
{
    EXPECT_EQ(menuAt(middleOf(row({}))), nullptr);
    EXPECT_EQ(menuAt(middleOf(rows->section(SidebarModel::Library))), nullptr);
}

TEST_F(SidebarTest, LoadsNothingWhenARowIsClickedForItsMenu)
{
    QTest::mouseClick(view->viewport(), Qt::RightButton, {}, middleOf(tagRow(QStringLiteral("sea"))));
    EXPECT_EQ(vm().currentSidebarItem.value(), SidebarItem());
}

TEST_F(SidebarTest, OffersANewTagInTheSection)
{
    auto *button = find<QToolButton>("newTagButton");
    ASSERT_NE(button, nullptr);
    EXPECT_EQ(button->text(), QStringLiteral("New Tag"));
    EXPECT_EQ(button->accessibleName(), QStringLiteral("New Tag"));
    EXPECT_EQ(textsOf(menuAt(middleOf(rows->section(SidebarModel::SmartTags)))),
              QStringList{QStringLiteral("New Tag")});
    find<QMenu>("sidebarMenu")->close();
    button->click();
    EXPECT_NE(find<QDialog>("newTagAlert"), nullptr);
}

TEST_F(SidebarTest, GivesADroppedCardTheTag)
{
    Drag drag(*window, card(QStringLiteral("p1")));
    EXPECT_TRUE(drag.moveTo(view->viewport(), middleOf(tagRow(QStringLiteral("sea")))));
    drag.drop();
    waitUntil(vm().papers,
              [](const QList<Paper> &papers) { return papers.first().tags.contains(QStringLiteral("sea")); });
    EXPECT_EQ(paper(QStringLiteral("p1"))->tags.size(), 2);
}

TEST_F(SidebarTest, MarksADroppedCardAsBeingRead)
{
    Drag drag(*window, card(QStringLiteral("p1")));
    EXPECT_TRUE(drag.moveTo(view->viewport(), middleOf(row(kReading))));
    drag.drop();
    waitUntil(vm().papers, [](const QList<Paper> &papers) {
        return papers.first().tags.contains(QStringLiteral("_currently_reading"));
    });
}

TEST_F(SidebarTest, RefusesCardsWhereTheyMeanNothing)
{
    Drag drag(*window, card(QStringLiteral("p1")));
    EXPECT_FALSE(drag.moveTo(view->viewport(), middleOf(row({}))));
    EXPECT_FALSE(drag.moveTo(view->viewport(), middleOf(row(kRecent))));
    EXPECT_FALSE(drag.moveTo(view->viewport(), middleOf(rows->section(SidebarModel::SmartTags))));
}

TEST_F(SidebarTest, ShowsTheTrashWhileACardIsDragged)
{
    EXPECT_EQ(find<QWidget>("trashTarget"), nullptr);
    Drag drag(*window, card(QStringLiteral("p1")));
    auto *trash = find<QWidget>("trashTarget");
    ASSERT_NE(trash, nullptr);
    EXPECT_EQ(trash->accessibleName(), QStringLiteral("Remove from Library"));
    drag.leave();
    EXPECT_EQ(find<QWidget>("trashTarget"), nullptr);
}

TEST_F(SidebarTest, TellsThatACardHoversOverTheTrash)
{
    Drag drag(*window, card(QStringLiteral("p1")));
    QCoreApplication::processEvents(); // the trash takes its place
    EXPECT_TRUE(drag.moveTo(find<QWidget>("trashTarget")));
    EXPECT_TRUE(vm().trashTargeted);
    drag.moveTo(view->viewport(), middleOf(row(kReading)));
    EXPECT_FALSE(vm().trashTargeted);
    drag.moveTo(find<QWidget>("trashTarget"));
    drag.leave();
    EXPECT_FALSE(vm().trashTargeted);
}

TEST_F(SidebarTest, TakesACardThatOnlyTheSearchFound)
{
    vm().searchResults = QList<SearchResult>{
        {QStringLiteral("p9"), QStringLiteral("Elsewhere"), QStringLiteral("/p9.pdf"), {}, {}, 1}};
    Drag drag(*window, card(QStringLiteral("p9")));
    QCoreApplication::processEvents();
    drag.moveTo(find<QWidget>("trashTarget"));
    drag.drop();
    ASSERT_TRUE(vm().confirmDeletePaper.value().has_value());
    EXPECT_EQ(vm().confirmDeletePaper.value()->title, QStringLiteral("Elsewhere"));
}

TEST_F(SidebarTest, AsksBeforeTheTrashTakesACard)
{
    Drag drag(*window, card(QStringLiteral("p2")));
    QCoreApplication::processEvents();
    drag.moveTo(find<QWidget>("trashTarget"));
    drag.drop();
    EXPECT_FALSE(vm().trashTargeted);
    EXPECT_EQ(find<QWidget>("trashTarget"), nullptr);
    ASSERT_TRUE(vm().confirmDeletePaper.value().has_value());
    EXPECT_EQ(vm().confirmDeletePaper.value()->id, QStringLiteral("p2"));
    EXPECT_NE(find<QMessageBox>("confirmDeleteAlert"), nullptr);
}
