#include "reader/ReaderFixture.h"

namespace
{
class PDFViewerControllerBookmarks : public ::testing::Test, protected ReaderFixture
{
protected:
    PDFViewerControllerBookmarks()
    {
        library.addPaper(QStringLiteral("p"), QStringLiteral("A paper"));
        library.addPaper(QStringLiteral("other"), QStringLiteral("Another"));
        text = PlacedText().line(QStringLiteral("  alpha beta"), {50, 100}).page();
        show();
    }

    void select(qint64 pageIndex) { view.select(PDFSelection(pageIndex, text, {0, 7})); }

    void awaitCount(qsizetype count)
    {
        awaitThat(controller->bookmarks, [&] { return controller->bookmarks.value().size() == count; });
    }

    PDFPageText text;
};
} // namespace

TEST_F(PDFViewerControllerBookmarks, StoresTheSelectionExactlyAndTheLabelTrimmed)
{
    controller->setRequest(requestOf(QStringLiteral("p")));
    select(0);
    QCoro::waitFor(controller->bookmarkSelection(QStringLiteral("\t the label  ")));
    awaitCount(1);
    const Bookmark stored = controller->bookmarks.value().first();
    EXPECT_EQ(stored.text, u"  alpha");
    EXPECT_EQ(stored.label, u"the label");
    EXPECT_EQ(stored.page, 1);
    EXPECT_EQ(stored.paperId, u"p");
    EXPECT_EQ(stored.createdAt, u"2025-03-07T14:05:09Z");
    EXPECT_EQ(stored.id.size(), 36);
    EXPECT_EQ(stored.id, stored.id.toUpper());
}

TEST_F(PDFViewerControllerBookmarks, StoresABlankLabelAsEmpty)
{
    controller->setRequest(requestOf(QStringLiteral("p")));
    select(2);
    QCoro::waitFor(controller->bookmarkSelection(QStringLiteral(" \t")));
    awaitCount(1);
    EXPECT_EQ(controller->bookmarks.value().first().label, QString());
    EXPECT_EQ(controller->bookmarks.value().first().page, 3);
}

TEST_F(PDFViewerControllerBookmarks, TakesTheFirstPageOfASelectionOverSeveral)
{
    controller->setRequest(requestOf(QStringLiteral("p")));
    PDFSelection selection(4, text, {0, 7});
    selection.add(PDFSelection(3, text, {8, 12}));
    view.select(selection);
    QCoro::waitFor(controller->bookmarkSelection({}));
    awaitCount(1);
    EXPECT_EQ(controller->bookmarks.value().first().page, 4);
}

TEST_F(PDFViewerControllerBookmarks, StoresNothingWithoutASelection)
{
    controller->setRequest(requestOf(QStringLiteral("p")));
    QCoro::waitFor(controller->bookmarkSelection(QStringLiteral("label")));
    view.select(PDFSelection());
    QCoro::waitFor(controller->bookmarkSelection(QStringLiteral("label")));
    EXPECT_EQ(library.count(QStringLiteral("bookmarks")), 0);
}

TEST_F(PDFViewerControllerBookmarks, StoresNothingForAPDFThatIsNotInTheLibrary)
{
    PDFOpenRequest request = requestOf(QString());
    request.paperId.reset();
    controller->setRequest(request);
    select(0);
    QCoro::waitFor(controller->bookmarkSelection(QStringLiteral("label")));
    EXPECT_EQ(library.count(QStringLiteral("bookmarks")), 0);
    EXPECT_TRUE(controller->bookmarks.value().isEmpty());
}

TEST_F(PDFViewerControllerBookmarks, LogsABookmarkThatCannotBeStoredAndTellsNobody)
{
    library.run(QStringLiteral(
        "CREATE TRIGGER refuse BEFORE INSERT ON bookmarks BEGIN SELECT RAISE(ABORT, 'no room'); END"));
    controller->setRequest(requestOf(QStringLiteral("p")));
    select(0);
    ::testing::internal::CaptureStdout();
    QCoro::waitFor(controller->bookmarkSelection({}));
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "Failed to create bookmark: no room\n");
    QCoreApplication::processEvents();
    EXPECT_FALSE(library.bookmarkEvents.lastChange());
}

TEST_F(PDFViewerControllerBookmarks, FiresTheObserversForEachOfTwoBookmarks)
{
    controller->setRequest(requestOf(QStringLiteral("p")));
    int changes = 0;
    const auto observer = library.bookmarkEvents.bindableLastChange().addNotifier([&] { ++changes; });
    select(0);
    QCoro::waitFor(controller->bookmarkSelection({}));
    QCoro::waitFor(controller->bookmarkSelection({}));
    awaitCount(2);
    EXPECT_EQ(changes, 2);
}

TEST_F(PDFViewerControllerBookmarks, ListsThemByPageAndThenByAge)
{
    const auto store = [this](const QString &name, qint64 page, const QString &time) {
        const Bookmark bookmark{newBookmarkId(), QStringLiteral("p"), name, page, {}, time};
        EXPECT_TRUE(library.service.createBookmark(bookmark).result());
    };
    store(QStringLiteral("third"), 4, QStringLiteral("2025-01-03T00:00:00Z"));
    store(QStringLiteral("second"), 2, QStringLiteral("2025-01-02T00:00:00Z"));
    store(QStringLiteral("first"), 2, QStringLiteral("2025-01-01T00:00:00Z"));
    controller->setRequest(requestOf(QStringLiteral("p")));
    awaitCount(3);
    QStringList listed;
    for (const Bookmark &bookmark : controller->bookmarks.value())
        listed.append(bookmark.text);
    EXPECT_EQ(listed,
              (QStringList{QStringLiteral("first"), QStringLiteral("second"), QStringLiteral("third")}));
}

TEST_F(PDFViewerControllerBookmarks, ListsAgainWhenAnyoneBookmarksItsPaperAndNotForOthers)
{
    controller->setRequest(requestOf(QStringLiteral("p")));
    QCoro::waitFor(controller->loadBookmarks());
    library.statements.clear();
    EXPECT_TRUE(library.service
                    .createBookmark({newBookmarkId(),
                                     QStringLiteral("other"),
                                     QStringLiteral("t"),
                                     1,
                                     {},
                                     QStringLiteral("2025-01-01T00:00:00Z")})
                    .result());
    QCoreApplication::processEvents();
    EXPECT_TRUE(library.statements.beginningWith(QStringLiteral("SELECT * FROM bookmarks")).isEmpty());
    EXPECT_TRUE(library.service
                    .createBookmark({newBookmarkId(),
                                     QStringLiteral("p"),
                                     QStringLiteral("t"),
                                     1,
                                     {},
                                     QStringLiteral("2025-01-01T00:00:00Z")})
                    .result());
    awaitCount(1);
}

TEST_F(PDFViewerControllerBookmarks, RemovesOne)
{
    controller->setRequest(requestOf(QStringLiteral("p")));
    select(0);
    QCoro::waitFor(controller->bookmarkSelection({}));
    awaitCount(1);
    QCoro::waitFor(controller->removeBookmark(controller->bookmarks.value().first().id));
    awaitCount(0);
    EXPECT_EQ(library.count(QStringLiteral("bookmarks")), 0);
}

TEST_F(PDFViewerControllerBookmarks, LogsOneThatCannotBeRemoved)
{
    library.run(QStringLiteral("DROP TABLE bookmarks"));
    ::testing::internal::CaptureStdout();
    QCoro::waitFor(controller->removeBookmark(QStringLiteral("X")));
    EXPECT_EQ(::testing::internal::GetCapturedStdout(),
              "Failed to remove bookmark: no such table: bookmarks\n");
}

TEST_F(PDFViewerControllerBookmarks, OpensOneWithItsTextLit)
{
    texts[3] = PlacedText().line(QStringLiteral("alpha beta"), {50, 100}).page();
    show();
    controller->goToBookmark({QStringLiteral("B"), QStringLiteral("p"), QStringLiteral("beta"), 4, {}, {}});
    EXPECT_EQ(view.nextJump(), u"selection beta");
}
