#include "ui/ContentView.h"

#include "ui/PaperDetailPanel.h"
#include "ui/PaperGrid.h"
#include "ui/SearchField.h"
#include "ui/WindowFixture.h"

#include <QAbstractItemView>
#include <QClipboard>
#include <QLineEdit>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QSplitter>
#include <QToolBar>
#include <QToolButton>
#include <gtest/gtest.h>

namespace
{
class ContentViewTest : public ::testing::Test, public WindowFixture
{
protected:
    ContentViewTest()
    {
        addPaper(QStringLiteral("p1"), QStringLiteral("Light"), {QStringLiteral("optics")});
        addPaper(QStringLiteral("p2"), QStringLiteral("Waves"),
                 {QStringLiteral("fish & chips"), QStringLiteral("_currently_reading")});
        load();
        openWindow();
    }

    QMenu *menu(const QString &title)
    {
        const QList<QAction *> menus = window->menuBar()->actions();
        for (const QAction *entry : menus) {
            if (QString(entry->text()).remove(u'&') == title)
                return entry->menu();
        }
        return nullptr;
    }
    QAction *entry(const QString &menuTitle, const QString &text)
    {
        const QList<QAction *> entries = menu(menuTitle)->actions();
        for (QAction *action : entries) {
            if (action->text() == text)
                return action;
        }
        return nullptr;
    }
    QToolButton *toolButton(const QString &text)
    {
        const auto buttons = find<QToolBar>("libraryToolBar")->findChildren<QToolButton *>();
        for (QToolButton *button : buttons) {
            if (button->text() == text)
                return button;
        }
        return nullptr;
    }
    /// The button's menu, as it is when it opens.
    QMenu *openedMenu(const QString &buttonText)
    {
        QMenu *buttonMenu = toolButton(buttonText)->defaultAction()->menu();
        Q_EMIT buttonMenu->aboutToShow();
        return buttonMenu;
    }
    QWidget *sidebar() { return window->findChild<QWidget *>(QStringLiteral("sidebar")); }
    QWidget *details() { return window->findChild<PaperDetailPanel *>(); }
};
} // namespace

TEST_F(ContentViewTest, IsTitledLibrary)
{
    EXPECT_EQ(window->windowTitle(), QStringLiteral("Library"));
}

TEST_F(ContentViewTest, HasTheMenusInTheirOrder)
{
    QStringList titles;
    const QList<QAction *> menus = window->menuBar()->actions();
    for (const QAction *entry : menus)
        titles.append(QString(entry->text()).remove(u'&'));
    EXPECT_EQ(titles, (QStringList{QStringLiteral("Quirevault"), QStringLiteral("File"),
                                   QStringLiteral("Edit"), QStringLiteral("Library"), QStringLiteral("View"),
                                   QStringLiteral("Window"), QStringLiteral("Help")}));
    EXPECT_EQ(textsOf(menu(QStringLiteral("Quirevault"))),
              (QStringList{QStringLiteral("About Quirevault"), QStringLiteral("Check for Updates…")}));
    EXPECT_EQ(textsOf(menu(QStringLiteral("File"))),
              (QStringList{QStringLiteral("Library"), QStringLiteral("Import PDFs…"), QStringLiteral("-"),
                           QStringLiteral("Close"), QStringLiteral("Quit")}));
    EXPECT_EQ(textsOf(menu(QStringLiteral("Edit"))),
              (QStringList{QStringLiteral("Undo"), QStringLiteral("-"), QStringLiteral("Cut"),
                           QStringLiteral("Copy"), QStringLiteral("Paste"), QStringLiteral("Select All"),
                           QStringLiteral("-"), QStringLiteral("Find in Library")}));
    EXPECT_EQ(textsOf(menu(QStringLiteral("Library"))),
              (QStringList{QStringLiteral("Retag Library…"), QStringLiteral("Refresh")}));
    EXPECT_EQ(
        textsOf(menu(QStringLiteral("View"))),
        (QStringList{QStringLiteral("Sidebar"), QStringLiteral("Details"), QStringLiteral("Full Screen")}));
    EXPECT_EQ(textsOf(menu(QStringLiteral("Help"))), QStringList{QStringLiteral("Keyboard Shortcuts")});
}

TEST_F(ContentViewTest, SharesItsCommandsWithTheApplication)
{
    EXPECT_EQ(entry(QStringLiteral("File"), QStringLiteral("Import PDFs…")), commands.importPDFs);
    EXPECT_EQ(toolButton(QStringLiteral("Import PDFs"))->defaultAction(), commands.importPDFs);
    EXPECT_EQ(toolButton(QStringLiteral("Refresh library"))->defaultAction(), commands.refresh);
    EXPECT_EQ(entry(QStringLiteral("Edit"), QStringLiteral("Find in Library")), commands.findInLibrary);
}

TEST_F(ContentViewTest, EditsTheTextFieldThatHasFocus)
{
    auto *field = find<SearchField>("searchField");
    field->setText(QStringLiteral("waves"));
    field->setFocus();
    entry(QStringLiteral("Edit"), QStringLiteral("Select All"))->trigger();
    EXPECT_EQ(field->selectedText(), QStringLiteral("waves"));
    entry(QStringLiteral("Edit"), QStringLiteral("Cut"))->trigger();
    EXPECT_EQ(field->text(), QString());
    entry(QStringLiteral("Edit"), QStringLiteral("Paste"))->trigger();
    EXPECT_EQ(field->text(), QStringLiteral("waves"));
    entry(QStringLiteral("Edit"), QStringLiteral("Undo"))->trigger();
    EXPECT_EQ(field->text(), QString());
}

TEST_F(ContentViewTest, EditsNothingWithoutATextField)
{
    QApplication::clipboard()->setText(QStringLiteral("kept"));
    toolButton(QStringLiteral("Import PDFs"))->setFocus();
    entry(QStringLiteral("Edit"), QStringLiteral("Copy"))->trigger();
    entry(QStringLiteral("Edit"), QStringLiteral("Cut"))->trigger();
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("kept"));
}

TEST_F(ContentViewTest, ListsTheKeys)
{
    entry(QStringLiteral("Help"), QStringLiteral("Keyboard Shortcuts"))->trigger();
    auto *shortcuts = find<QDialog>("shortcutsWindow");
    ASSERT_NE(shortcuts, nullptr);
    EXPECT_EQ(shortcuts->windowTitle(), QStringLiteral("Keyboard Shortcuts"));
    const auto *list = find<QAbstractItemView>(shortcuts, "shortcutsList")->model();
    EXPECT_FALSE(
        list->match(list->index(0, 1), Qt::DisplayRole, QStringLiteral("Ctrl+F"), 1, Qt::MatchRecursive)
            .isEmpty());
}

TEST_F(ContentViewTest, ListsItsWindowsInTheWindowMenu)
{
    QMenu *windows = menu(QStringLiteral("Window"));
    Q_EMIT windows->aboutToShow();
    EXPECT_EQ(textsOf(windows),
              (QStringList{QStringLiteral("Minimize"), QStringLiteral("-"), QStringLiteral("Library")}));
    EXPECT_TRUE(windows->actions().last()->isChecked());
}

TEST_F(ContentViewTest, HasAToolBarThatSaysWhatItDoes)
{
    for (const QString &text :
         {QStringLiteral("Import PDFs"), QStringLiteral("Refresh library"), QStringLiteral("Toggle details"),
          QStringLiteral("Tag All Visible"), QStringLiteral("Remove Tag")}) {
        ASSERT_NE(toolButton(text), nullptr) << text.toStdString();
        EXPECT_FALSE(toolButton(text)->icon().isNull()) << text.toStdString();
    }
    EXPECT_EQ(toolButton(QStringLiteral("Tag All Visible"))->toolTip(),
              QStringLiteral("Apply a tag to all visible papers"));
    EXPECT_EQ(toolButton(QStringLiteral("Remove Tag"))->toolTip(),
              QStringLiteral("Remove a tag from all visible papers"));
}

TEST_F(ContentViewTest, AsksForATagForAllVisiblePapers)
{
    openedMenu(QStringLiteral("Tag All Visible"))->actions().first()->trigger();
    EXPECT_NE(find<QDialog>("tagAllAlert"), nullptr);
}

TEST_F(ContentViewTest, GivesAKnownTagToAllVisiblePapers)
{
    QMenu *tags = openedMenu(QStringLiteral("Tag All Visible"));
    EXPECT_EQ(textsOf(tags), (QStringList{QStringLiteral("Tag All…"), QStringLiteral("-"),
                                          QStringLiteral("fish && chips"), QStringLiteral("optics")}));
    tags->actions().last()->trigger();
    waitUntil(vm().papers, [](const QList<Paper> &papers) {
        return papers.at(1).tags.contains(QStringLiteral("optics"));
    });
}

TEST_F(ContentViewTest, RemovesATagFromAllVisiblePapers)
{
    vm().queryText = QStringLiteral("title:Light");
    QMenu *tags = openedMenu(QStringLiteral("Remove Tag"));
    EXPECT_EQ(textsOf(tags), QStringList{QStringLiteral("optics")}) << "of visible papers, none reserved";
    tags->actions().first()->trigger();
    waitUntil(vm().papers, [](const QList<Paper> &papers) { return papers.first().tags.isEmpty(); });
}

TEST_F(ContentViewTest, SaysWhenThereIsNoTagToRemove)
{
    vm().queryText = QStringLiteral("title:nothing");
    const QMenu *tags = openedMenu(QStringLiteral("Remove Tag"));
    EXPECT_EQ(textsOf(tags), QStringList{QStringLiteral("No tags on visible papers")});
    EXPECT_FALSE(tags->actions().first()->isEnabled());
}

TEST_F(ContentViewTest, ShowsAndHidesItsPanels)
{
    toolButton(QStringLiteral("Toggle details"))->click();
    EXPECT_FALSE(details()->isVisible());
    EXPECT_FALSE(entry(QStringLiteral("View"), QStringLiteral("Details"))->isChecked());
    toolButton(QStringLiteral("Toggle details"))->click();
    EXPECT_TRUE(details()->isVisible());
    entry(QStringLiteral("View"), QStringLiteral("Sidebar"))->trigger();
    EXPECT_FALSE(sidebar()->isVisible());
}

TEST_F(ContentViewTest, ShowsTheDetailsToEditThem)
{
    vm().select(vm().papers.value().first());
    toolButton(QStringLiteral("Toggle details"))->click();
    Q_EMIT window->findChild<PaperGrid *>(QStringLiteral("papers"))->editRequested();
    EXPECT_TRUE(details()->isVisible());
}

TEST_F(ContentViewTest, BeginsWithItsOwnWidths)
{
    const QList<int> widths = find<QSplitter>("panes")->sizes();
    EXPECT_EQ(widths.at(0), 220);
    EXPECT_EQ(widths.at(2), 320);
}

TEST_F(ContentViewTest, RemembersItsLayout)
{
    window->resize(1100, 700);
    find<QSplitter>("panes")->setSizes({250, 500, 350});
    const QList<int> widths = find<QSplitter>("panes")->sizes();
    entry(QStringLiteral("View"), QStringLiteral("Sidebar"))->trigger();
    window->close();

    openWindow();
    EXPECT_EQ(window->size(), QSize(1100, 700));
    EXPECT_FALSE(sidebar()->isVisible());
    EXPECT_FALSE(entry(QStringLiteral("View"), QStringLiteral("Sidebar"))->isChecked());
    entry(QStringLiteral("View"), QStringLiteral("Sidebar"))->trigger();
    QCoreApplication::processEvents();
    EXPECT_EQ(find<QSplitter>("panes")->sizes().at(0), widths.at(0));
    EXPECT_EQ(find<QSplitter>("panes")->sizes().at(2), widths.at(2));
}

TEST_F(ContentViewTest, StandsAWrongMemoryOfItsLayout)
{
    preferences.setText(QLatin1String(kLibraryWidthsKey), QStringLiteral("wide,-1"));
    preferences.setText(QLatin1String(kLibraryGeometryKey), QStringLiteral("%%%"));
    openWindow();
    EXPECT_EQ(find<QSplitter>("panes")->sizes().at(0), 220);
}

TEST_F(ContentViewTest, FitsIntoEightHundredPixels)
{
    window->resize(800, 600);
    QCoreApplication::processEvents();
    EXPECT_EQ(window->width(), 800);
    EXPECT_TRUE(details()->isVisible());
    EXPECT_TRUE(sidebar()->isVisible());
}

TEST_F(ContentViewTest, TellsTheCommandsWhetherItHasFocus)
{
    EXPECT_EQ(commands.focusedLibrary(), &vm());
    QWidget other;
    other.show();
    QApplication::setActiveWindow(&other);
    EXPECT_EQ(commands.focusedLibrary(), nullptr);
    commands.findInLibrary->trigger();
    EXPECT_EQ(vm().searchFocusRequest, 0);
    QApplication::setActiveWindow(window.get());
    commands.findInLibrary->trigger();
    EXPECT_EQ(vm().searchFocusRequest, 1);
}

TEST_F(ContentViewTest, IsForgottenByTheCommandsWhenItGoes)
{
    window.reset();
    EXPECT_EQ(commands.focusedLibrary(), nullptr);
    commands.importPDFs->trigger();
}

TEST_F(ContentViewTest, TellsWhenItIsClosed)
{
    QSignalSpy closed(window.get(), &ContentView::closed);
    entry(QStringLiteral("File"), QStringLiteral("Close"))->trigger();
    EXPECT_EQ(closed.size(), 1);
    EXPECT_FALSE(window->isVisible());
}
