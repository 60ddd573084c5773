#include "ui/BookmarkRow.h"
#include "ui/PanelFixture.h"

#include <QAction>
#include <QLabel>
#include <QTabWidget>
#include <QToolButton>

class BookmarksTabTest : public PanelFixture
{
protected:
    Bookmark addBookmark(const QString &text, qint64 page, const QString &label = {},
                         const QString &paperId = QStringLiteral("p"))
    {
        const Bookmark bookmark{.id = newBookmarkId(),
                                .paperId = paperId,
                                .text = text,
                                .page = page,
                                .label = label,
                                .createdAt = QStringLiteral("2024-03-05T14:07:09Z")};
        EXPECT_TRUE(library.service.createBookmark(bookmark).result());
        return bookmark;
    }
    void openTab() { panel->findChild<QTabWidget *>()->setCurrentIndex(1); }
    QList<BookmarkRow *> rows()
    {
        QList<BookmarkRow *> rows = panel->findChildren<BookmarkRow *>();
        rows.removeIf([](const BookmarkRow *row) { return row->isHidden(); });
        return rows;
    }
    QStringList texts()
    {
        QStringList texts;
        for (const BookmarkRow *row : rows())
            texts.append(row->bookmark().text);
        return texts;
    }
    void waitForCount(qsizetype count)
    {
        waitUntil(vm().bookmarks,
                  [=](const QList<Bookmark> &bookmarks) { return bookmarks.size() == count; });
    }
    /// Runs the event loop until the views have heard of a change.
    void waitForChangeOf(const QString &paperId)
    {
        QEventLoop loop;
        auto lastChange = library.bookmarkEvents.bindableLastChange();
        const auto observer = lastChange.addNotifier([&] { loop.quit(); });
        if (!lastChange.value() || lastChange.value()->paperId != paperId)
            loop.exec();
        EXPECT_EQ(lastChange.value()->paperId, paperId);
    }
    void showPaperWith(qsizetype bookmarks)
    {
        openTab();
        show(paper(QStringLiteral("p")));
        waitForCount(bookmarks);
    }
    /// Shows a paper whose only bookmark this is.
    BookmarkRow *showRow(const QString &text, qint64 page, const QString &label)
    {
        addPaper(QStringLiteral("p"), QStringLiteral("On Graphs"));
        addBookmark(text, page, label);
        showPaperWith(1);
        return rows().value(0);
    }
    static QString lineOf(const BookmarkRow *row, const char *name)
    {
        return row->findChild<QLabel *>(QLatin1String(name))->text();
    }
};

TEST_F(BookmarksTabTest, SaysThatThereAreNone)
{
    showPaper();
    openTab();
    EXPECT_EQ(find<QLabel>("bookmarksHeading")->text(), u"Bookmarks");
    EXPECT_EQ(find<QLabel>("noBookmarks")->text(), u"No bookmarks yet");
    EXPECT_TRUE(find("noBookmarks")->isVisible());
}

TEST_F(BookmarksTabTest, LoadsWhenItFirstShows)
{
    addPaper(QStringLiteral("p"), QStringLiteral("On Graphs"));
    addBookmark(QStringLiteral("a passage"), 3);
    show(paper(QStringLiteral("p")));
    waitFor(vm().loadTags());
    EXPECT_EQ(vm().bookmarks.value(), QList<Bookmark>());
    openTab();
    waitForCount(1);
    EXPECT_EQ(texts(), QStringList{QStringLiteral("a passage")});
    EXPECT_FALSE(find("noBookmarks")->isVisible());
}

TEST_F(BookmarksTabTest, ListsByPage)
{
    addPaper(QStringLiteral("p"), QStringLiteral("On Graphs"));
    addBookmark(QStringLiteral("later"), 9);
    addBookmark(QStringLiteral("earlier"), 2);
    showPaperWith(2);
    EXPECT_EQ(texts(), (QStringList{QStringLiteral("earlier"), QStringLiteral("later")}));
}

TEST_F(BookmarksTabTest, ShowsLabelPassageAndPageOfABookmark)
{
    const BookmarkRow *row = showRow(QStringLiteral("a passage"), 12, QStringLiteral("Key lemma"));
    EXPECT_EQ(lineOf(row, "bookmarkLabel"), u"Key lemma");
    EXPECT_EQ(lineOf(row, "bookmarkText"), u"a passage");
    EXPECT_EQ(lineOf(row, "bookmarkPage"), u"Page 12 — double-click to open");
    EXPECT_TRUE(row->findChild<QLabel *>(QStringLiteral("bookmarkLabel"))->isVisible());
    EXPECT_TRUE(row->findChild<QLabel *>(QStringLiteral("bookmarkText"))->font().italic());
    EXPECT_EQ(row->accessibleName(), u"Bookmark on page 12: Key lemma");
    EXPECT_EQ(row->accessibleDescription(), u"a passage");
}

TEST_F(BookmarksTabTest, ShowsNoLabelLineForAnEmptyLabel)
{
    const BookmarkRow *row = showRow(QStringLiteral("a passage"), 12, {});
    EXPECT_FALSE(row->findChild<QLabel *>(QStringLiteral("bookmarkLabel"))->isVisible());
    EXPECT_EQ(row->accessibleName(), u"Bookmark on page 12");
}

TEST_F(BookmarksTabTest, ListsABookmarkThatAReaderWindowAdds)
{
    showPaper();
    openTab();
    waitFor(vm().loadTags());
    addBookmark(QStringLiteral("a passage"), 3);
    waitForCount(1);
    EXPECT_EQ(texts(), QStringList{QStringLiteral("a passage")});
}

TEST_F(BookmarksTabTest, DoesNotReloadForAnotherPapersBookmark)
{
    addPaper(QStringLiteral("q"), QStringLiteral("Other"));
    showPaper();
    openTab();
    waitFor(vm().loadBookmarks(QStringLiteral("p")));
    // A reload would drop this from the list.
    const QList<Bookmark> marker{{.id = QStringLiteral("m"),
                                  .paperId = QStringLiteral("p"),
                                  .text = {},
                                  .label = {},
                                  .createdAt = {}}};
    vm().bookmarks = marker;
    addBookmark(QStringLiteral("elsewhere"), 3, {}, QStringLiteral("q"));
    waitForChangeOf(QStringLiteral("q"));
    waitFor(vm().loadTags());
    EXPECT_EQ(vm().bookmarks.value(), marker);
    EXPECT_EQ(rows().size(), 1);
}

TEST_F(BookmarksTabTest, ShowsNothingOfThePaperBefore)
{
    showRow(QStringLiteral("a passage"), 3, {});
    vm().select(addPaper(QStringLiteral("q"), QStringLiteral("Other")));
    EXPECT_EQ(texts(), QStringList());
    EXPECT_TRUE(find("noBookmarks")->isVisible());
    waitForCount(0);
}

TEST_F(BookmarksTabTest, OpensTheReaderAtThePassageOnADoubleClick)
{
    BookmarkRow *row = showRow(QStringLiteral("a passage"), 12, {});
    QTest::mouseClick(row, Qt::LeftButton);
    EXPECT_TRUE(requests.isEmpty());
    QTest::mouseDClick(row, Qt::LeftButton);
    QTest::mouseDClick(row, Qt::LeftButton);
    ASSERT_EQ(requests.size(), 2);
    const PDFOpenRequest request = requests.first();
    EXPECT_NE(request.id, requests.last().id);
    EXPECT_EQ(request.url, QUrl(QStringLiteral("file:///papers/p.pdf")));
    EXPECT_EQ(request.page, 12);
    EXPECT_EQ(request.paperId, QStringLiteral("p"));
    EXPECT_EQ(request.highlightText, QStringLiteral("a passage"));
    EXPECT_FALSE(request.searchText);
}

TEST_F(BookmarksTabTest, OpensTheReaderByTheKeyboard)
{
    BookmarkRow *row = showRow(QStringLiteral("a passage"), 12, {});
    QTest::keyClick(row, Qt::Key_Return);
    QTest::keyClick(row, Qt::Key_Space);
    EXPECT_EQ(requests.size(), 2);
}

TEST_F(BookmarksTabTest, DeletesByTheButton)
{
    const BookmarkRow *row = showRow(QStringLiteral("a passage"), 12, {});
    auto *button = row->findChild<QToolButton *>();
    EXPECT_EQ(button->accessibleName(), u"Delete bookmark");
    QTest::mouseClick(button, Qt::LeftButton);
    waitForCount(0);
    EXPECT_EQ(texts(), QStringList());
    EXPECT_TRUE(requests.isEmpty());
    EXPECT_TRUE(library.service.bookmarksForPaper(QStringLiteral("p")).result()->isEmpty());
}

TEST_F(BookmarksTabTest, DeletesByTheContextMenu)
{
    const BookmarkRow *row = showRow(QStringLiteral("a passage"), 12, {});
    ASSERT_EQ(row->actions().size(), 1);
    EXPECT_EQ(row->contextMenuPolicy(), Qt::ActionsContextMenu);
    EXPECT_EQ(row->actions().first()->text(), u"Delete");
    row->actions().first()->trigger();
    waitForCount(0);
    EXPECT_EQ(texts(), QStringList());
}

TEST_F(BookmarksTabTest, DeletesByTheKeyboardAndFocusesTheNeighbour)
{
    addPaper(QStringLiteral("p"), QStringLiteral("On Graphs"));
    addBookmark(QStringLiteral("a"), 1);
    addBookmark(QStringLiteral("b"), 2);
    showPaperWith(2);
    rows().first()->setFocus();
    QTest::keyClick(rows().first(), Qt::Key_Delete);
    waitForCount(1);
    ASSERT_EQ(texts(), QStringList{QStringLiteral("b")});
    EXPECT_EQ(QApplication::focusWidget(), rows().first());
}
