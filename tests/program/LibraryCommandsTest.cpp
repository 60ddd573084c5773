// The commands that list, show and change what the library holds.
#include "program/LibraryFixture.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <unistd.h>

class LibraryCommands : public LibraryFixture
{
protected:
    void SetUp() override
    {
        paper(QStringLiteral("knots.pdf"), {QStringLiteral("On homotopy")}, "Knots", "K. Reidemeister");
        paper(QStringLiteral("trees.pdf"), {QStringLiteral("On trees")}, "Trees");
        ASSERT_EQ(importAll().status, 0);
        m_knots = idsByTitle().value(QStringLiteral("Knots"));
    }
    ProgramRun run(QStringList arguments)
    {
        arguments.append(QStringLiteral("--json"));
        return m_program.run(arguments);
    }
    QStringList titles(const ProgramRun &run)
    {
        QStringList titles;
        for (const QJsonValue paper : run.json().array())
            titles.append(paper[QLatin1String("title")].toString());
        return titles;
    }

    QString m_knots;
};

TEST_F(LibraryCommands, ListsPapersByTitle)
{
    EXPECT_EQ(titles(run({QStringLiteral("list")})),
              (QStringList{QStringLiteral("Knots"), QStringLiteral("Trees")}));
}

TEST_F(LibraryCommands, ListsByFilterAndRefusesFreeTextThere)
{
    EXPECT_EQ(
        titles(run({QStringLiteral("list"), QStringLiteral("--filter"), QStringLiteral("author:reide")})),
        QStringList{QStringLiteral("Knots")});
    EXPECT_EQ(run({QStringLiteral("list"), QStringLiteral("--filter"), QStringLiteral("words")}).status, 2);
}

TEST_F(LibraryCommands, ListsThePapersOfTheLastImport)
{
    // Stored times have whole seconds: what was imported first must be older than that.
    sqlite3 *database = nullptr;
    ASSERT_EQ(sqlite3_open(m_program.libraryPath().toUtf8().constData(), &database), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(database, "UPDATE papers SET date_indexed = '2001-01-01T00:00:00Z'", nullptr,
                           nullptr, nullptr),
              SQLITE_OK);
    sqlite3_close(database);
    paper(QStringLiteral("later.pdf"), {QStringLiteral("On lateness")}, "Later");
    ASSERT_EQ(importAll().status, 0);
    EXPECT_EQ(titles(run({QStringLiteral("list"), QStringLiteral("--recent")})),
              QStringList{QStringLiteral("Later")});

    importAll(); // nothing is new: the last import stays
    EXPECT_EQ(titles(run({QStringLiteral("list"), QStringLiteral("--recent")})),
              QStringList{QStringLiteral("Later")});
}

TEST_F(LibraryCommands, TakesBracketsForWhatTheyAre)
{
    const QString bracketed = m_papers.path(QStringLiteral("[papers]"));
    ASSERT_TRUE(QDir().mkpath(bracketed));
    m_papers.write(QStringLiteral("[papers]/x.pdf"),
                   PdfBuilder().title("Bracketed").page({QStringLiteral("[a,b]")}).build());
    m_program.setWorkingFolder(m_papers.path());
    const ProgramRun imported = run({QStringLiteral("import"), QStringLiteral("[papers]")});
    EXPECT_EQ(imported.json()[QLatin1String("indexed")].toArray().size(), 1) << imported.out.toStdString();
    const ProgramRun explained =
        run({QStringLiteral("search"), QStringLiteral("--explain"), QStringLiteral("[a,b]")});
    EXPECT_EQ(explained.json()[QLatin1String("fullText")].toString(), u"[a,b]");
}

TEST_F(LibraryCommands, SaysThatAnAnswerCouldNotBeWritten)
{
    m_program.setChildSetup([] { dup2(open("/dev/full", O_WRONLY), STDOUT_FILENO); });
    const ProgramRun listed = run({QStringLiteral("list")});
    EXPECT_EQ(listed.status, 1);
    EXPECT_TRUE(listed.err.contains(u"No space left on device")) << listed.err.toStdString();
}

TEST_F(LibraryCommands, ShowsAPaperByAPrefixOfItsId)
{
    const ProgramRun shown = run({QStringLiteral("show"), m_knots.left(8)});
    EXPECT_EQ(shown.json()[QLatin1String("title")].toString(), u"Knots");
    EXPECT_EQ(shown.json()[QLatin1String("page_count")].toInt(), 1);
    EXPECT_FALSE(shown.json().object().contains(QLatin1String("year")));
    EXPECT_TRUE(QFile::exists(shown.json()[QLatin1String("cover_path")].toString()));
}

TEST_F(LibraryCommands, NamesAnUnknownPaperOnStandardError)
{
    const ProgramRun shown = run({QStringLiteral("show"), QStringLiteral("zzzz")});
    EXPECT_EQ(shown.status, 1);
    EXPECT_EQ(shown.err, u"quirevault: No paper has the id 'zzzz'\n");
    EXPECT_EQ(shown.json()[QLatin1String("error")].toString(), u"No paper has the id 'zzzz'");
}

TEST_F(LibraryCommands, RefusesAPrefixThatIsTooShort)
{
    const ProgramRun shown = m_program.run({QStringLiteral("show"), m_knots.left(3)});
    EXPECT_EQ(shown.status, 1);
    EXPECT_TRUE(shown.err.contains(u"at least 4 characters"));
}

TEST_F(LibraryCommands, EditsWhatIsGivenAndKeepsTheRest)
{
    const ProgramRun edited =
        run({QStringLiteral("edit"), m_knots, QStringLiteral("--year"), QStringLiteral("1932"),
             QStringLiteral("--title"), QStringLiteral("Knotentheorie")});
    EXPECT_EQ(edited.status, 0);
    EXPECT_EQ(edited.json()[QLatin1String("year")].toInt(), 1932);
    EXPECT_EQ(edited.json()[QLatin1String("title")].toString(), u"Knotentheorie");
    EXPECT_EQ(edited.json()[QLatin1String("authors")].toString(), u"K. Reidemeister");
    const ProgramRun cleared = run({QStringLiteral("edit"), m_knots, QStringLiteral("--authors"), QString()});
    EXPECT_EQ(cleared.json()[QLatin1String("authors")].toString(), QString());
}

TEST_F(LibraryCommands, RefusesEditsThatMakeNoSense)
{
    EXPECT_EQ(run({QStringLiteral("edit"), m_knots}).status, 2);
    EXPECT_EQ(run({QStringLiteral("edit"), m_knots, QStringLiteral("--title"), QStringLiteral("  ")}).status,
              2);
    EXPECT_EQ(run({QStringLiteral("edit"), m_knots, QStringLiteral("--year"), QStringLiteral("soon")}).status,
              2);
}

TEST_F(LibraryCommands, TagsAndUntagsAPaper)
{
    EXPECT_EQ(run({QStringLiteral("tag"), m_knots, QStringLiteral(" to read ")}).status, 0);
    EXPECT_EQ(titles(run({QStringLiteral("list"), QStringLiteral("--tag"), QStringLiteral("to read")})),
              QStringList{QStringLiteral("Knots")});
    EXPECT_EQ(run({QStringLiteral("untag"), m_knots, QStringLiteral("to read")}).status, 0);
    EXPECT_TRUE(
        titles(run({QStringLiteral("list"), QStringLiteral("--tag"), QStringLiteral("to read")})).isEmpty());
}

TEST_F(LibraryCommands, TakesUntaggedFromAPaperThatGetsATag)
{
    EXPECT_EQ(run({QStringLiteral("tag"), m_knots, QStringLiteral("Untagged")}).status, 0);
    EXPECT_EQ(run({QStringLiteral("tag"), m_knots, QStringLiteral("to read")}).status, 0);
    EXPECT_TRUE(
        titles(run({QStringLiteral("list"), QStringLiteral("--tag"), QStringLiteral("Untagged")})).isEmpty());
}

TEST_F(LibraryCommands, KeepsTheReadingListOutOfTheTags)
{
    EXPECT_EQ(run({QStringLiteral("tag"), m_knots, QStringLiteral("_currently_reading")}).status, 0);
    EXPECT_EQ(titles(run({QStringLiteral("list"), QStringLiteral("--reading")})),
              QStringList{QStringLiteral("Knots")});
    EXPECT_FALSE(run({QStringLiteral("tags")}).json().array().contains(QStringLiteral("_currently_reading")));
    EXPECT_EQ(run({QStringLiteral("tag"), m_knots, QStringLiteral("_mine")}).status, 2);
}

TEST_F(LibraryCommands, CreatesRenamesAndDeletesTags)
{
    EXPECT_TRUE(run({QStringLiteral("tags"), QStringLiteral("create"), QStringLiteral("new")})
                    .json()
                    .array()
                    .contains(QStringLiteral("new")));
    const QJsonArray renamed = run({QStringLiteral("tags"), QStringLiteral("rename"), QStringLiteral("new"),
                                    QStringLiteral("newer")})
                                   .json()
                                   .array();
    EXPECT_TRUE(renamed.contains(QStringLiteral("newer")));
    EXPECT_FALSE(renamed.contains(QStringLiteral("new")));
    EXPECT_FALSE(run({QStringLiteral("tags"), QStringLiteral("delete"), QStringLiteral("newer")})
                     .json()
                     .array()
                     .contains(QStringLiteral("newer")));
}

TEST_F(LibraryCommands, SaysThatATagToRenameOrDeleteDoesNotExist)
{
    EXPECT_EQ(
        run({QStringLiteral("tags"), QStringLiteral("rename"), QStringLiteral("ghost"), QStringLiteral("x")})
            .status,
        1);
    EXPECT_EQ(run({QStringLiteral("tags"), QStringLiteral("delete"), QStringLiteral("ghost")}).status, 1);
}

TEST_F(LibraryCommands, RefusesBlankAndReservedTagNames)
{
    EXPECT_EQ(run({QStringLiteral("tags"), QStringLiteral("create"), QStringLiteral("  ")}).status, 2);
    EXPECT_EQ(run({QStringLiteral("tags"), QStringLiteral("create"), QStringLiteral("_secret")}).status, 2);
}

TEST_F(LibraryCommands, RetagsTheLibrary)
{
    const ProgramRun retagged = run({QStringLiteral("retag")});
    EXPECT_EQ(retagged.status, 0);
    EXPECT_EQ(retagged.json()[QLatin1String("total")].toInt(), 2);
    EXPECT_EQ(m_program.run({QStringLiteral("retag")}).out, u"Retagged 0 of 2 papers.\n");
}

TEST_F(LibraryCommands, ListsNoBookmarksOfANewPaper)
{
    EXPECT_TRUE(run({QStringLiteral("bookmarks"), m_knots}).json().isArray());
    EXPECT_TRUE(m_program.run({QStringLiteral("bookmarks"), m_knots}).out.endsWith(u"No bookmarks.\n"));
}

TEST_F(LibraryCommands, RemovesPapersAndNeverTheirFiles)
{
    const QString cover =
        run({QStringLiteral("show"), m_knots}).json()[QLatin1String("cover_path")].toString();
    const ProgramRun removed = run({QStringLiteral("remove"), m_knots, QStringLiteral("zzzz")});
    EXPECT_EQ(removed.status, 1) << "one of the two is unknown";
    EXPECT_EQ(removed.json()[QLatin1String("removed")].toArray(), QJsonArray{m_knots});
    EXPECT_EQ(titles(run({QStringLiteral("list")})), QStringList{QStringLiteral("Trees")});
    EXPECT_TRUE(run({QStringLiteral("search"), QStringLiteral("homotopy")}).json().array().isEmpty());
    EXPECT_FALSE(QFile::exists(cover));
    EXPECT_TRUE(QFile::exists(m_papers.path(QStringLiteral("knots.pdf"))));
}

TEST_F(LibraryCommands, PrintsHelpAndVersionWithoutALibrary)
{
    EXPECT_EQ(m_program.run({QStringLiteral("--version")}).status, 0);
    EXPECT_TRUE(m_program.run({QStringLiteral("--help")}).out.contains(u"import"));
    EXPECT_TRUE(m_program.run({QStringLiteral("import"), QStringLiteral("--help")}).out.contains(u"PATH"));
}

TEST_F(LibraryCommands, AnswersWrongUsageWithADocumentWhereOneIsDue)
{
    const ProgramRun wrong = run({QStringLiteral("show")});
    EXPECT_EQ(wrong.status, 2);
    EXPECT_TRUE(wrong.json()[QLatin1String("error")].toString().contains(u"PAPER-ID"))
        << wrong.out.toStdString();
}

TEST_F(LibraryCommands, CallsUnknownArgumentsWrongUsage)
{
    EXPECT_EQ(m_program.run({QStringLiteral("dance")}).status, 2);
    EXPECT_EQ(m_program.run({QStringLiteral("show")}).status, 2);
    EXPECT_EQ(m_program.run({QStringLiteral("list"), QStringLiteral("--reading"), QStringLiteral("--recent")})
                  .status,
              2);
}
