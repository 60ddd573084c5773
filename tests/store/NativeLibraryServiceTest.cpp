#include "support/TestLibrary.h"

#include <QDir>
#include <algorithm>

namespace
{
class LibraryPapers : public ::testing::Test
{
protected:
    QStringList tagsOf(const QString &id) { return (*library.service.paperById(id).result())->tags; }

    TestLibrary library;
};

QString id(int number)
{
    return QStringLiteral("paper-%1").arg(number, 5, 10, QLatin1Char('0'));
}

QList<qsizetype> placeholderCounts(const QStringList &statements)
{
    QList<qsizetype> counts;
    for (const QString &sql : statements)
        counts.append(sql.count(u'?'));
    return counts;
}
} // namespace

TEST_F(LibraryPapers, AreListedByTitleThenAuthorsWithoutRegardToCase)
{
    library.addPaper(QStringLiteral("1"), QStringLiteral("beta"));
    library.addPaper(QStringLiteral("2"), QStringLiteral("Alpha"), QStringLiteral("zed"));
    library.addPaper(QStringLiteral("3"), QStringLiteral("alpha"), QStringLiteral("Young"));
    library.addPaper(QStringLiteral("4"), QStringLiteral("Gamma"));
    EXPECT_EQ(
        idsOf(*library.service.allPapers().result()),
        (QStringList{QStringLiteral("3"), QStringLiteral("2"), QStringLiteral("1"), QStringLiteral("4")}));
}

TEST_F(LibraryPapers, WithoutATitleAreNotListedButWithoutAuthorsOrYearAre)
{
    library.run(QStringLiteral("INSERT INTO papers (id, filepath) VALUES ('none', '/n.pdf')"));
    library.run(QStringLiteral("INSERT INTO papers (id, title, filepath) VALUES ('a', 'T', '/a.pdf')"));
    library.run(
        QStringLiteral("INSERT INTO papers (id, title, filepath, year) VALUES ('b', 'U', '/b.pdf', 0)"));
    const QList<Paper> papers = *library.service.allPapers().result();
    ASSERT_EQ(idsOf(papers), (QStringList{QStringLiteral("a"), QStringLiteral("b")}));
    EXPECT_EQ(papers[0].authors, QString());
    EXPECT_EQ(papers[0].year, std::nullopt);
    EXPECT_EQ(papers[1].year, 0);
}

TEST_F(LibraryPapers, FoundByOneTagCarryAllTheirTags)
{
    library.addPaper(QStringLiteral("a"), QStringLiteral("A"));
    library.addPaper(QStringLiteral("b"), QStringLiteral("B"));
    for (const char *tag : {"x", "y"})
        ASSERT_TRUE(library.service.addTag(QStringLiteral("a"), QLatin1String(tag)).result());
    const QList<Paper> papers = *library.service.papersWithTag(QStringLiteral("y")).result();
    ASSERT_EQ(idsOf(papers), QStringList{QStringLiteral("a")});
    EXPECT_EQ(papers.first().tags, (QStringList{QStringLiteral("x"), QStringLiteral("y")}));
}

TEST_F(LibraryPapers, WithATagAreListedByTitle)
{
    for (const char *title : {"b", "C", "a"}) {
        library.addPaper(QLatin1String(title), QLatin1String(title));
        ASSERT_TRUE(library.service.addTag(QLatin1String(title), QStringLiteral("x")).result());
    }
    EXPECT_EQ(idsOf(*library.service.papersWithTag(QStringLiteral("x")).result()),
              (QStringList{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("C")}));
}

TEST_F(LibraryPapers, AreFetchedByIdsInSlicesOfFiveHundred)
{
    QStringList ids;
    for (int i = 0; i < 1201; ++i)
        ids.append(id(i));
    library.run(QStringLiteral(
        "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < 1200) "
        "INSERT INTO papers (id, title, filepath) SELECT printf('paper-%05d', i), 't', 'p' FROM n"));
    library.statements.clear();
    const QList<Paper> papers = *library.service.papersByIds(ids + ids).result();

    QStringList found = idsOf(papers);
    std::sort(found.begin(), found.end());
    EXPECT_EQ(found, ids) << "each once";
    EXPECT_EQ(placeholderCounts(
                  library.statements.beginningWith(QStringLiteral("SELECT * FROM papers WHERE id IN (?, "))),
              (QList<qsizetype>{500, 500, 201}));
    EXPECT_EQ(placeholderCounts(library.statements.beginningWith(
                  QStringLiteral("SELECT paper_id, tag FROM tags WHERE paper_id IN (?, "))),
              (QList<qsizetype>{500, 500, 201}));
}

TEST_F(LibraryPapers, ByNoIdsTakeNoStatement)
{
    ASSERT_TRUE(library.db.verifyUsable().result());
    library.statements.clear();
    EXPECT_TRUE(library.service.papersByIds({}).result()->isEmpty());
    EXPECT_EQ(library.statements.all(), QStringList());
}

TEST_F(LibraryPapers, ThatDoNotExistAreLeftOut)
{
    library.addPaper(QStringLiteral("a"), QStringLiteral("A"));
    const QStringList ids{QStringLiteral("gone"), QStringLiteral("a")};
    EXPECT_EQ(idsOf(*library.service.papersByIds(ids).result()), QStringList{QStringLiteral("a")});
    EXPECT_EQ(*library.service.paperById(QStringLiteral("gone")).result(), std::nullopt);
    EXPECT_EQ(*library.service.paperByContentHash(QStringLiteral("gone")).result(), std::nullopt);
}

TEST_F(LibraryPapers, RecentlyImportedAreListedNewestFirstFromTheCutOffOn)
{
    const char *const dates[] = {"2025-01-01T00:00:00Z", "2025-03-01T10:00:00Z", "2025-03-01T09:59:59Z",
                                 "2025-03-02T00:00:00Z"};
    for (int i = 0; i < 4; ++i) {
        library.run(
            QStringLiteral("INSERT INTO papers (id, title, filepath, date_indexed) VALUES (?, 't', 'p', ?)"),
            {QString::number(i), QString::fromUtf8(dates[i])});
    }
    EXPECT_EQ(idsOf(*library.service.recentlyImportedPapers(QStringLiteral("2025-03-01T10:00:00Z")).result()),
              (QStringList{QStringLiteral("3"), QStringLiteral("1")}));
}

TEST_F(LibraryPapers, TellTheContentHashOfTheirImport)
{
    library.run(QStringLiteral("INSERT INTO papers (id, content_hash) VALUES ('p', 'beef'), ('q', NULL)"));
    EXPECT_EQ(*library.service.contentHashOfPaper(QStringLiteral("p")).result(), QStringLiteral("beef"));
    EXPECT_EQ(*library.service.contentHashOfPaper(QStringLiteral("q")).result(), std::nullopt);
    EXPECT_EQ(*library.service.contentHashOfPaper(QStringLiteral("gone")).result(), std::nullopt);
}

TEST_F(LibraryPapers, AreFoundByTheirContentHash)
{
    library.run(QStringLiteral(
        "INSERT INTO papers (id, title, filepath, content_hash) VALUES ('a', 't', 'p', 'beef')"));
    ASSERT_TRUE(library.service.addTag(QStringLiteral("a"), QStringLiteral("x")).result());
    const std::optional<Paper> paper = *library.service.paperByContentHash(QStringLiteral("beef")).result();
    ASSERT_TRUE(paper);
    EXPECT_EQ(paper->id, u"a");
    EXPECT_EQ(paper->tags, QStringList{QStringLiteral("x")});
}

TEST_F(LibraryPapers, AreFoundByTheirPath)
{
    library.addPaper(QStringLiteral("a"), QStringLiteral("A"));
    const auto paper = library.service.paperByFilepath(QStringLiteral("/papers/a.pdf")).result();
    ASSERT_TRUE(paper.value());
    EXPECT_EQ((*paper)->id, u"a");
    EXPECT_EQ(*library.service.paperByFilepath(QStringLiteral("/papers/A.pdf")).result(), std::nullopt);
}

TEST_F(LibraryPapers, AreFoundByTheBeginningOfTheirIds)
{
    for (const char *paperId : {"ab12", "ab02", "ab", "ac00", "aa99", "AB00"})
        library.addPaper(QLatin1String(paperId), QStringLiteral("t"));
    EXPECT_EQ(*library.service.paperIdsWithPrefix(QStringLiteral("ab")).result(),
              (QStringList{QStringLiteral("ab"), QStringLiteral("ab02"), QStringLiteral("ab12")}));
    EXPECT_EQ(*library.service.paperIdsWithPrefix(QStringLiteral("ab%")).result(), QStringList());
}

TEST_F(LibraryPapers, TakeANewPath)
{
    library.addPaper(QStringLiteral("a"), QStringLiteral("A"));
    const Result<Paper> moved =
        library.service.updateFilepath(QStringLiteral("a"), QStringLiteral("/new/ä\n.pdf")).result();
    ASSERT_TRUE(moved);
    EXPECT_EQ(moved->filepath, QStringLiteral("/new/ä\n.pdf"));
    EXPECT_EQ(*library.service.allFilepaths().result(), QSet<QString>{QStringLiteral("/new/ä\n.pdf")});
}

TEST_F(LibraryPapers, ThatAreUnknownCannotMove)
{
    const Result<Paper> moved =
        library.service.updateFilepath(QStringLiteral("a"), QStringLiteral("/p")).result();
    ASSERT_FALSE(moved);
    EXPECT_EQ(moved.error(), (Error{QStringLiteral("NativeLibraryService"),
                                    1,
                                    QStringLiteral("Paper not found after filepath update"),
                                    {}}));
}

TEST_F(LibraryPapers, ChangeOnlyTheFieldsThatAreGiven)
{
    library.addPaper(QStringLiteral("a"), QStringLiteral("A"), QStringLiteral("Ann"), qint64(1999));
    library.statements.clear();
    const Result<Paper> edited =
        library.service
            .updatePaper(QStringLiteral("a"), {.title = QStringLiteral("B"), .authors = {}, .year = 2001})
            .result();
    ASSERT_TRUE(edited);
    EXPECT_EQ(edited->title, u"B");
    EXPECT_EQ(edited->authors, u"Ann");
    EXPECT_EQ(edited->year, 2001);
    EXPECT_EQ(library.statements.beginningWith(QStringLiteral("UPDATE")),
              QStringList{QStringLiteral("UPDATE papers SET title = ?, year = ? WHERE id = ?")});
}

TEST_F(LibraryPapers, ChangeEveryFieldInOneStatement)
{
    library.addPaper(QStringLiteral("a"), QStringLiteral("A"));
    library.statements.clear();
    ASSERT_TRUE(
        library.service
            .updatePaper(QStringLiteral("a"), {.title = QString(), .authors = QStringLiteral("B"), .year = 0})
            .result());
    EXPECT_EQ(library.statements.beginningWith(QStringLiteral("UPDATE")),
              QStringList{QStringLiteral("UPDATE papers SET title = ?, authors = ?, year = ? WHERE id = ?")});
    EXPECT_EQ((*library.service.paperById(QStringLiteral("a")).result())->title, QString());
}

TEST_F(LibraryPapers, StayAsTheyAreWhenNothingIsGiven)
{
    library.addPaper(QStringLiteral("a"), QStringLiteral("A"), QStringLiteral("Ann"), qint64(1999));
    library.statements.clear();
    const Result<Paper> same = library.service.updatePaper(QStringLiteral("a"), {}).result();
    ASSERT_TRUE(same);
    EXPECT_EQ(*same, **library.service.paperById(QStringLiteral("a")).result());
    EXPECT_EQ(library.statements.beginningWith(QStringLiteral("UPDATE")), QStringList());
}

TEST_F(LibraryPapers, ThatAreUnknownCannotChange)
{
    for (const PaperEdit &edit :
         {PaperEdit{}, PaperEdit{.title = QStringLiteral("B"), .authors = {}, .year = {}}}) {
        const Result<Paper> edited = library.service.updatePaper(QStringLiteral("a"), edit).result();
        ASSERT_FALSE(edited);
        EXPECT_EQ(edited.error(), (Error{QStringLiteral("NativeLibraryService"),
                                         1,
                                         QStringLiteral("Paper not found after update"),
                                         {}}));
    }
}

TEST_F(LibraryPapers, NameEachPathOnce)
{
    library.run(QStringLiteral(
        "INSERT INTO papers (id, filepath) VALUES ('a', '/p'), ('b', '/p'), ('c', '/q'), ('d', NULL)"));
    EXPECT_EQ(*library.service.allFilepaths().result(),
              (QSet<QString>{QStringLiteral("/p"), QStringLiteral("/q")}));
}

TEST_F(LibraryPapers, PassOnTheErrorsOfTheDatabase)
{
    library.run(QStringLiteral("DROP TABLE tags"));
    library.addPaper(QStringLiteral("a"), QStringLiteral("A"));
    const auto failed = library.service.allPapers().result();
    ASSERT_FALSE(failed);
    EXPECT_EQ(failed.error().domain, u"DatabaseManager");
    EXPECT_EQ(failed.error().description, u"no such table: tags");
}

TEST_F(LibraryPapers, AreDeletedWithAllThatIsTheirsButThePDF)
{
    const QString pdf = library.folder.write(QStringLiteral("a.pdf"), "%PDF");
    const QString cover = library.folder.write(QStringLiteral("a.jpg"), "jpeg");
    library.run(
        QStringLiteral("INSERT INTO papers (id, title, filepath, cover_path) VALUES ('a', 't', ?, ?)"),
        {pdf, cover});
    library.addPaper(QStringLiteral("b"), QStringLiteral("B"));
    for (const char *paperId : {"a", "b"}) {
        ASSERT_TRUE(library.service.addTag(QLatin1String(paperId), QStringLiteral("x")).result());
        ASSERT_TRUE(library.service
                        .createBookmark({.id = newBookmarkId(),
                                         .paperId = QLatin1String(paperId),
                                         .text = QStringLiteral("t"),
                                         .page = 1,
                                         .label = {},
                                         .createdAt = QStringLiteral("2025")})
                        .result());
        library.addPage(QLatin1String(paperId), 1, "words");
    }
    ASSERT_TRUE(library.service.deletePaper(QStringLiteral("a")).result());
    EXPECT_EQ(idsOf(*library.service.allPapers().result()), QStringList{QStringLiteral("b")});
    for (const char *table : {"tags", "bookmarks", "fts_papers"})
        EXPECT_EQ(library.count(QLatin1String(table)), 1) << table;
    EXPECT_FALSE(QFile::exists(cover));
    EXPECT_TRUE(QFile::exists(pdf));
    EXPECT_EQ(library.publisher.withdrawn, QStringList{QStringLiteral("a")});
}

TEST_F(LibraryPapers, WithoutACoverAreDeletedWithoutTouchingAFile)
{
    library.run(QStringLiteral(
        "INSERT INTO papers (id, title, filepath, cover_path) VALUES "
        "('none', 't', 'p', NULL), ('empty', 't', 'p', ''), ('gone', 't', 'p', '/nowhere/c.jpg')"));
    const QStringList before = QDir(library.folder.path()).entryList();
    for (const char *paperId : {"none", "empty", "gone"})
        EXPECT_TRUE(library.service.deletePaper(QLatin1String(paperId)).result()) << paperId;
    EXPECT_EQ(QDir(library.folder.path()).entryList(), before);
    EXPECT_EQ(library.count(QStringLiteral("papers")), 0);
}

TEST_F(LibraryPapers, ThatCannotBeDeletedWholeAreKeptWhole)
{
    const QString cover = library.folder.write(QStringLiteral("a.jpg"), "jpeg");
    library.run(
        QStringLiteral("INSERT INTO papers (id, title, filepath, cover_path) VALUES ('a', 't', 'p', ?)"),
        {cover});
    ASSERT_TRUE(library.service.addTag(QStringLiteral("a"), QStringLiteral("x")).result());
    library.run(QStringLiteral("DROP TABLE fts_papers"));
    EXPECT_FALSE(library.service.deletePaper(QStringLiteral("a")).result());
    EXPECT_EQ(tagsOf(QStringLiteral("a")), QStringList{QStringLiteral("x")});
    EXPECT_TRUE(QFile::exists(cover));
    EXPECT_EQ(library.publisher.withdrawn, QStringList());
}

TEST_F(LibraryPapers, AreCountedInAllByTagAndByDate)
{
    for (const char *id : {"a", "b", "c"})
        library.addPaper(QLatin1String(id), QLatin1String(id));
    library.run(QStringLiteral("UPDATE papers SET date_indexed = '2025-01-0' || rowid || 'T00:00:00Z'"));
    ASSERT_TRUE(library.service.addTag(QStringLiteral("a"), QStringLiteral("x")).result());
    ASSERT_TRUE(library.service.addTag(QStringLiteral("b"), QStringLiteral("x")).result());
    ASSERT_TRUE(library.service.createTag(QStringLiteral("unused")).result());
    const PaperCounts expected{.all = 3, .recentlyImported = 2, .byTag = {{QStringLiteral("x"), 2}}};
    EXPECT_EQ(library.service.paperCounts(QStringLiteral("2025-01-02T00:00:00Z")).result().value(), expected);
    EXPECT_EQ(library.service.paperCounts(std::nullopt).result()->recentlyImported, 0);
}
