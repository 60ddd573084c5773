// The commands that list, add and remove bookmarks.
#include "program/LibraryFixture.h"

class BookmarkCommands : public LibraryFixture
{
protected:
    void SetUp() override
    {
        paper(QStringLiteral("knots.pdf"), {QStringLiteral("On homotopy")}, "Knots");
        ASSERT_EQ(importAll().status, 0);
        m_knots = idsByTitle().value(QStringLiteral("Knots"));
    }

    ProgramRun bookmarks(const QStringList &arguments)
    {
        return m_program.run(QStringList(QStringLiteral("bookmarks")) + arguments);
    }
    ProgramRun add(const QString &page, const QString &text, const QStringList &more = {})
    {
        return bookmarks(QStringList{QStringLiteral("add"), m_knots.left(8), QStringLiteral("--page"), page,
                                     QStringLiteral("--text"), text} +
                         more);
    }
    QJsonArray listed() { return bookmarks({m_knots, QStringLiteral("--json")}).json().array(); }

    QString m_knots;
};

TEST_F(BookmarkCommands, AddAPassageWithItsLabel)
{
    const ProgramRun added =
        add(QStringLiteral("1"), QStringLiteral("On homotopy"),
            {QStringLiteral("--label"), QStringLiteral(" title "), QStringLiteral("--json")});
    EXPECT_EQ(added.status, 0) << added.err.toStdString();
    ASSERT_EQ(listed().size(), 1);
    EXPECT_EQ(listed()[0].toObject(), added.json().object());
    EXPECT_EQ(added.json()[QLatin1String("text")].toString(), u"On homotopy");
    EXPECT_EQ(added.json()[QLatin1String("label")].toString(), u"title");
    EXPECT_EQ(added.json()[QLatin1String("page")].toInt(), 1);
    EXPECT_EQ(added.json()[QLatin1String("paper_id")].toString(), m_knots);
}

TEST_F(BookmarkCommands, RefuseABookmarkThatMakesNoSense)
{
    const QString text = QStringLiteral("x");
    for (const char *page : {"0", "-1", "2", "soon"})
        EXPECT_EQ(add(QLatin1String(page), text).status, 2) << page;
    EXPECT_EQ(add(QStringLiteral("1"), QStringLiteral(" \n")).status, 2);
    EXPECT_EQ(
        bookmarks({QStringLiteral("add"), m_knots, QStringLiteral("--page"), QStringLiteral("1")}).status, 2);
    EXPECT_TRUE(listed().isEmpty());
}

TEST_F(BookmarkCommands, RemoveABookmarkByThePrefixThatTheListShows)
{
    add(QStringLiteral("1"), QStringLiteral("one"));
    add(QStringLiteral("1"), QStringLiteral("two"));
    const QString shown = listed()[0].toObject()[QLatin1String("id")].toString().left(8);
    EXPECT_TRUE(bookmarks({m_knots}).out.contains(shown));
    const ProgramRun removed = bookmarks({QStringLiteral("remove"), shown.toLower()});
    EXPECT_EQ(removed.out, u"Removed the bookmark on page 1.\n") << removed.err.toStdString();
    ASSERT_EQ(listed().size(), 1);
    EXPECT_FALSE(listed()[0].toObject()[QLatin1String("id")].toString().startsWith(shown));
}

TEST_F(BookmarkCommands, SayThatABookmarkToRemoveDoesNotExist)
{
    const ProgramRun removed = bookmarks({QStringLiteral("remove"), QStringLiteral("ABCDEF")});
    EXPECT_EQ(removed.status, 1);
    EXPECT_EQ(removed.err, u"quirevault: No bookmark has the id 'ABCDEF'\n");
    EXPECT_EQ(bookmarks({QStringLiteral("remove"), QStringLiteral("AB")}).status, 1);
}

TEST_F(BookmarkCommands, WriteThemAsMarkdown)
{
    add(QStringLiteral("1"), QStringLiteral("On *homotopy*"),
        {QStringLiteral("--label"), QStringLiteral("!")});
    EXPECT_EQ(bookmarks({m_knots, QStringLiteral("--markdown")}).out,
              u"# Knots\n\n> On \\*homotopy\\*\n>\n> — **!**, page 1\n");
    EXPECT_EQ(bookmarks({m_knots, QStringLiteral("--markdown"), QStringLiteral("--json")}).status, 2);
}

TEST_F(BookmarkCommands, NeedAPaperOrASubcommand)
{
    const ProgramRun alone = bookmarks({});
    EXPECT_EQ(alone.status, 2);
    EXPECT_TRUE(alone.err.contains(u"PAPER-ID")) << alone.err.toStdString();
}
