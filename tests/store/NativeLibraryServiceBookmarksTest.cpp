#include "support/TestLibrary.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <QThread>

namespace
{
class LibraryBookmarks : public ::testing::Test
{
protected:
    void SetUp() override { library.addPaper(QStringLiteral("a"), QStringLiteral("A")); }

    static Bookmark bookmark(const QString &text, qint64 page, const QString &createdAt)
    {
        return {.id = newBookmarkId(),
                .paperId = QStringLiteral("a"),
                .text = text,
                .page = page,
                .label = {},
                .createdAt = createdAt};
    }

    Bookmark create(const QString &text, qint64 page, const QString &createdAt)
    {
        const Bookmark created = bookmark(text, page, createdAt);
        EXPECT_TRUE(library.service.createBookmark(created).result());
        return created;
    }

    QList<Bookmark> listed() { return *library.service.bookmarksForPaper(QStringLiteral("a")).result(); }

    /// Lets what other threads posted to this one arrive.
    static void receive() { QCoreApplication::sendPostedEvents(); }

    int argc = 1;
    char name[6] = "tests";
    char *argv[2] = {name, nullptr};
    QCoreApplication application{argc, argv};
    TestLibrary library;
};
} // namespace

TEST_F(LibraryBookmarks, AreListedByPageAndOnAPageOldestFirst)
{
    create(QStringLiteral("third"), 2, QStringLiteral("2024-03-05T14:07:10Z"));
    create(QStringLiteral("second"), 2, QStringLiteral("2024-03-05T14:07:09Z"));
    create(QStringLiteral("first"), 1, QStringLiteral("2024-03-06T00:00:00Z"));
    QStringList texts;
    for (const Bookmark &found : listed())
        texts.append(found.text);
    EXPECT_EQ(texts,
              (QStringList{QStringLiteral("first"), QStringLiteral("second"), QStringLiteral("third")}));
}

TEST_F(LibraryBookmarks, ComeBackAsTheyWereStored)
{
    Bookmark stored = bookmark(QStringLiteral("ä passage"), 7, QStringLiteral("2024-03-05T14:07:09Z"));
    stored.label = QStringLiteral("label");
    ASSERT_TRUE(library.service.createBookmark(stored).result());
    EXPECT_EQ(listed(), QList<Bookmark>{stored});
}

TEST_F(LibraryBookmarks, WithABlankLabelHaveAnEmptyOne)
{
    create(QStringLiteral("x"), 1, QStringLiteral("2024"));
    EXPECT_EQ(listed().first().label, QString());
    EXPECT_EQ(library.db.query(QStringLiteral("SELECT label FROM bookmarks"))
                  .result()
                  ->first()
                  .text(QLatin1String("label")),
              QString());
}

TEST_F(LibraryBookmarks, ThatLackAFieldAreNotListed)
{
    const QStringList columns{QStringLiteral("id"), QStringLiteral("text"), QStringLiteral("page"),
                              QStringLiteral("created_at")};
    for (const QString &column : columns) {
        create(column, 1, QStringLiteral("2024"));
        library.run(QStringLiteral("UPDATE bookmarks SET %1 = NULL WHERE text = ?").arg(column), {column});
    }
    create(QStringLiteral("whole"), 1, QStringLiteral("2024"));
    library.run(QStringLiteral("UPDATE bookmarks SET label = NULL"));
    ASSERT_EQ(listed().size(), 1);
    EXPECT_EQ(listed().first().text, u"whole");
}

TEST_F(LibraryBookmarks, OfOtherPapersAreNotListed)
{
    create(QStringLiteral("x"), 1, QStringLiteral("2024"));
    EXPECT_TRUE(library.service.bookmarksForPaper(QStringLiteral("b")).result()->isEmpty());
}

TEST_F(LibraryBookmarks, AreDeletedKnownOrNot)
{
    const Bookmark created = create(QStringLiteral("x"), 1, QStringLiteral("2024"));
    EXPECT_TRUE(library.service.deleteBookmark(QStringLiteral("unknown")).result());
    EXPECT_EQ(listed().size(), 1);
    EXPECT_TRUE(library.service.deleteBookmark(created.id).result());
    EXPECT_TRUE(listed().isEmpty());
}

TEST_F(LibraryBookmarks, HaveIdsOfTheirOwnInUpperCase)
{
    const QString id = newBookmarkId();
    EXPECT_TRUE(QRegularExpression(QStringLiteral("^[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}$"))
                    .match(id)
                    .hasMatch())
        << id.toStdString();
    EXPECT_NE(id, newBookmarkId());
}

TEST_F(LibraryBookmarks, ThatAreCreatedFireTheObserversEachTimeOnTheirThread)
{
    QStringList changed;
    const auto observer = library.bookmarkEvents.bindableLastChange().addNotifier([&] {
        EXPECT_EQ(QThread::currentThread(), library.bookmarkEvents.thread());
        EXPECT_EQ(listed().size(), 2) << "who lists again sees the new rows";
        changed.append(library.bookmarkEvents.lastChange()->paperId);
    });
    create(QStringLiteral("x"), 1, QStringLiteral("2024"));
    create(QStringLiteral("y"), 1, QStringLiteral("2024"));
    EXPECT_EQ(library.bookmarkEvents.lastChange(), std::nullopt);
    receive();
    EXPECT_EQ(changed, (QStringList{QStringLiteral("a"), QStringLiteral("a")}));
}

TEST_F(LibraryBookmarks, ThatAreDeletedFireTheObserversWhenTheyWereKnown)
{
    const Bookmark created = create(QStringLiteral("x"), 1, QStringLiteral("2024"));
    receive();
    int changes = 0;
    const auto observer = library.bookmarkEvents.bindableLastChange().addNotifier([&] { ++changes; });
    ASSERT_TRUE(library.service.deleteBookmark(QStringLiteral("unknown")).result());
    receive();
    EXPECT_EQ(changes, 0);
    ASSERT_TRUE(library.service.deleteBookmark(created.id).result());
    receive();
    EXPECT_EQ(changes, 1);
}

TEST_F(LibraryBookmarks, ThatCannotBeStoredFireNothing)
{
    Bookmark orphan = bookmark(QStringLiteral("x"), 1, QStringLiteral("2024"));
    orphan.paperId = QStringLiteral("gone");
    const auto failed = library.service.createBookmark(orphan).result();
    ASSERT_FALSE(failed);
    EXPECT_EQ(failed.error().description, u"FOREIGN KEY constraint failed");
    receive();
    EXPECT_EQ(library.bookmarkEvents.lastChange(), std::nullopt);
}

TEST(BookmarkEvents, ChangeAtOnceOnTheirOwnThreadAndNeverTwiceTheSame)
{
    BookmarkEvents events;
    events.post(QStringLiteral("a"));
    const auto first = events.lastChange();
    ASSERT_TRUE(first);
    EXPECT_EQ(first->paperId, u"a");
    events.post(QStringLiteral("a"));
    EXPECT_NE(events.lastChange(), first);
}

TEST(BookmarkEvents, AreOneForTheProcess)
{
    EXPECT_EQ(&BookmarkEvents::shared(), &BookmarkEvents::shared());
}
