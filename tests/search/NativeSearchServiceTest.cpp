#include "search/NativeSearchService.h"
#include "support/Gate.h"
#include "support/TestLibrary.h"

#include <QThreadPool>
#include <QtConcurrent/qtconcurrentrun.h>
#include <algorithm>

namespace
{
class Search : public ::testing::Test
{
protected:
    void SetUp() override
    {
        library.addPaper(QStringLiteral("a"), QStringLiteral("Paper A"));
        library.addPaper(QStringLiteral("b"), QStringLiteral("Paper B"));
    }

    QList<SearchResult> found(const QString &query) { return *search.search(query).result(); }

    QList<Passage> foundInA(const QString &query)
    {
        return *search.searchInPaper(QStringLiteral("a"), query).result();
    }

    /// Adds `count` pages that hold "words", from page `first` downwards.
    void addPagesDownFrom(qint64 first, int count)
    {
        QList<Chunk> chunks;
        for (int i = 0; i < count; ++i)
            chunks.append({.text = "some words here", .pageNum = first - i, .index = i});
        ASSERT_TRUE(library.db.insertChunks(QStringLiteral("a"), chunks).result());
    }

    TestLibrary library;
    NativeSearchService search{library.db};
};

qsizetype passageCount(const QList<SearchResult> &results)
{
    qsizetype count = 0;
    for (const SearchResult &result : results)
        count += result.passages.size();
    return count;
}
} // namespace

TEST_F(Search, AnswersOneResultForAPaperWithHitsOnTwoPages)
{
    library.addPage(QStringLiteral("a"), 3,
                    "graph and much else that makes this page long and the match worth little");
    library.addPage(QStringLiteral("a"), 7, "graph graph graph");
    library.addPage(QStringLiteral("b"), 1, "nothing of the kind");
    const QList<SearchResult> results = found(QStringLiteral("graph"));
    ASSERT_EQ(results.size(), 1);
    EXPECT_EQ(results[0].title, u"Paper A");
    ASSERT_EQ(results[0].passages.size(), 2);
    EXPECT_EQ(results[0].passages[0], (Passage{QStringLiteral("...graph... ...graph... ...graph..."), 7}));
    EXPECT_EQ(results[0].passages[1].page, 3);

    const auto ranks = library.db
                           .query(QStringLiteral("SELECT bm25(fts_papers) AS r FROM fts_papers "
                                                 "WHERE fts_papers MATCH 'graph*' ORDER BY r"))
                           .result();
    EXPECT_DOUBLE_EQ(results[0].score, 1.0 + *ranks->first().real(QLatin1String("r")) / -100.0);
}

TEST_F(Search, AnswersTheBestPaperFirst)
{
    library.addPage(QStringLiteral("a"), 1, "graph in a page that has far more words than the other one has");
    library.addPage(QStringLiteral("b"), 1, "graph graph");
    EXPECT_EQ(found(QStringLiteral("graph")).value(0).paperId, u"b");
}

TEST_F(Search, AsksNothingForAnEmptyExpression)
{
    ASSERT_TRUE(library.db.verifyUsable().result());
    library.statements.clear();
    for (const char *query : {"", "  ", "... --", "AND or"}) {
        const auto answer = search.search(QLatin1String(query));
        EXPECT_TRUE(answer.isFinished());
        EXPECT_TRUE(answer.result()->isEmpty());
        EXPECT_TRUE(foundInA(QLatin1String(query)).isEmpty());
    }
    EXPECT_EQ(library.statements.all(), QStringList());
}

TEST_F(Search, AsksTheIndexOnceAndThePapersOnce)
{
    for (qint64 page = 1; page <= 5; ++page) {
        library.addPage(QStringLiteral("a"), page, "graph");
        library.addPage(QStringLiteral("b"), page, "graph");
    }
    library.statements.clear();
    EXPECT_EQ(found(QStringLiteral("graph")).size(), 2);
    EXPECT_EQ(library.statements.beginningWith(QStringLiteral("    SELECT paper_id, page_num")).size(), 1);
    EXPECT_EQ(library.statements.beginningWith(QStringLiteral("SELECT * FROM papers")).size(), 1);
}

TEST_F(Search, CountsPassagesThatReadTheSameOnOnePageOnce)
{
    library.addPage(QStringLiteral("a"), 1, "graph");
    library.addPage(QStringLiteral("a"), 1, "graph");
    library.addPage(QStringLiteral("a"), 1, "graph theory");
    EXPECT_EQ(passageCount(found(QStringLiteral("graph"))), 2);
}

TEST_F(Search, LogsAnExpressionThatTheIndexRejectsAndAnswersNothing)
{
    library.addPage(QStringLiteral("a"), 1, "graph");
    ::testing::internal::CaptureStdout();
    EXPECT_TRUE(found(QStringLiteral("not graph")).isEmpty());
    EXPECT_EQ(::testing::internal::GetCapturedStdout(),
              "NativeSearchService: FTS query failed for 'NOT graph*': fts5: syntax error near \"NOT\"\n");
    ::testing::internal::CaptureStdout();
    EXPECT_TRUE(foundInA(QStringLiteral("not graph")).isEmpty());
    EXPECT_EQ(
        ::testing::internal::GetCapturedStdout(),
        "NativeSearchService: in-paper FTS query failed for 'NOT graph*': fts5: syntax error near \"NOT\"\n");
}

TEST_F(Search, PassesOnThatThePapersCannotBeRead)
{
    library.addPage(QStringLiteral("a"), 1, "graph");
    library.run(QStringLiteral("DROP TABLE tags"));
    const auto failed = search.search(QStringLiteral("graph")).result();
    ASSERT_FALSE(failed);
    EXPECT_EQ(failed.error().description, u"no such table: tags");
}

TEST_F(Search, DropsHitsOfPapersThatAreGone)
{
    library.addPage(QStringLiteral("a"), 1, "graph");
    library.addPage(QStringLiteral("gone"), 1, "graph");
    const QList<SearchResult> results = found(QStringLiteral("graph"));
    ASSERT_EQ(results.size(), 1);
    EXPECT_EQ(results[0].paperId, u"a");
}

TEST_F(Search, ConsidersTheFiftyBestPages)
{
    addPagesDownFrom(60, 60);
    library.addPage(QStringLiteral("b"), 1, "words words words");
    const QList<SearchResult> results = found(QStringLiteral("words"));
    EXPECT_EQ(passageCount(results), 50);
    EXPECT_EQ(results.value(0).paperId, u"b");
}

TEST_F(Search, FindsWordsByTheirBeginningWithoutRegardToCaseAndAccents)
{
    library.addPage(QStringLiteral("a"), 1, "Die Überlagerung der TRANSFORMERS");
    for (const char *query :
         {"uberl", "ÜBERLAGERUNG", "transformer*", "\"die uberlagerung\"", "NEAR(die transf, 2)"})
        EXPECT_EQ(found(QString::fromUtf8(query)).size(), 1) << query;
    EXPECT_EQ(found(QStringLiteral("former")).size(), 0);
    EXPECT_EQ(found(QStringLiteral("NEAR(die transf, 1)")).size(), 0);
}

TEST_F(Search, AnswersWorkersThatBlockOnItInEveryThreadOfThePool)
{
    library.addPage(QStringLiteral("a"), 1, "graph");
    QThreadPool &pool = *QThreadPool::globalInstance();
    QList<QFuture<qsizetype>> workers;
    for (int i = 0; i < 3 * pool.maxThreadCount(); ++i)
        workers.append(QtConcurrent::run(&pool, [this] { return found(QStringLiteral("graph")).size(); }));
    for (const auto &worker : workers)
        EXPECT_EQ(worker.result(), 1);
}

TEST_F(Search, RefusesAMegabyteOfWordsInsteadOfHanging)
{
    library.addPage(QStringLiteral("a"), 1, "graph");
    const QString megabyte = QStringLiteral("graph ").repeated(180'000);
    ::testing::internal::CaptureStdout();
    EXPECT_TRUE(found(megabyte).isEmpty());
    EXPECT_TRUE(foundInA(megabyte).isEmpty());
    const std::string log = ::testing::internal::GetCapturedStdout();
    EXPECT_EQ(std::count(log.begin(), log.end(), '\n'), 2);
    EXPECT_NE(log.find("the query is too long"), std::string::npos);
}

TEST_F(Search, TakesSixtyFourWordsAndNotOneMore)
{
    library.addPage(QStringLiteral("a"), 1, "graph theory");
    const QStringList accepted{
        QStringLiteral("graph ").repeated(64), QStringLiteral("graph-theory ").repeated(32),
        QStringLiteral("\"graph theory\" ") + QStringLiteral("graph OR ").repeated(30) + u"graph graph"};
    for (const QString &query : accepted) {
        EXPECT_EQ(found(query).size(), 1) << query.toStdString();
        EXPECT_EQ(foundInA(query).size(), 1) << query.toStdString();
        ::testing::internal::CaptureStdout();
        const QString longer = query + u" graph";
        EXPECT_TRUE(found(longer).isEmpty());
        EXPECT_TRUE(foundInA(longer).isEmpty());
        const std::string log = ::testing::internal::GetCapturedStdout();
        EXPECT_EQ(std::count(log.begin(), log.end(), '\n'), 2) << log;
        EXPECT_NE(log.find("the query is too long"), std::string::npos) << log;
    }
}

TEST_F(Search, OvertakesWhatAServiceOfTheBackgroundHasQueued)
{
    library.addPage(QStringLiteral("a"), 1, "graph");
    NativeLibraryService background(library.db, library.publisher, library.bookmarkEvents,
                                    Urgency::Background);
    Gate gate(library.db);
    library.statements.clear();
    const auto lookUp = background.paperByContentHash(QStringLiteral("digest"));
    auto move = background.updateFilepath(QStringLiteral("a"), QStringLiteral("/new.pdf"));
    auto readBack = background.paperById(QStringLiteral("a"));
    const auto hits = search.search(QStringLiteral("graph"));
    gate.open();
    ASSERT_EQ(readBack.result()->value().filepath, u"/new.pdf");
    ASSERT_EQ(hits.result()->size(), 1);

    const QStringList ran = library.statements.all();
    const auto position = [&ran](const QString &head) {
        const auto isIt = [&head](const QString &sql) {
            return sql.startsWith(head);
        };
        return std::find_if(ran.begin(), ran.end(), isIt) - ran.begin();
    };
    EXPECT_LT(position(QStringLiteral("    SELECT paper_id, page_num")),
              position(QStringLiteral("SELECT * FROM papers WHERE content_hash")));
    EXPECT_LT(position(QStringLiteral("SELECT * FROM papers WHERE id IN")),
              position(QStringLiteral("SELECT * FROM papers WHERE content_hash")));
    EXPECT_LT(position(QStringLiteral("SELECT * FROM papers WHERE content_hash")),
              position(QStringLiteral("UPDATE papers SET filepath")));
}

TEST_F(Search, InOnePaperAnswersItsFirstHundredPagesInOrder)
{
    addPagesDownFrom(120, 120);
    library.addPage(QStringLiteral("b"), 1, "words");
    const QList<Passage> passages = foundInA(QStringLiteral("word"));
    ASSERT_EQ(passages.size(), 100);
    for (qsizetype i = 0; i < passages.size(); ++i)
        EXPECT_EQ(passages[i], (Passage{QStringLiteral("some ...words... here"), i + 1}));
}

TEST_F(Search, InAPaperThatIsNotIndexedAnswersNothing)
{
    library.addPage(QStringLiteral("a"), 1, "words");
    EXPECT_TRUE(search.searchInPaper(QStringLiteral("unknown"), QStringLiteral("words")).result()->isEmpty());
}

TEST_F(Search, InOnePaperLeavesRowsWithoutAPageOut)
{
    library.run(QStringLiteral("INSERT INTO fts_papers (paper_id, page_num, content) VALUES "
                               "('a', NULL, 'words'), ('a', 'x', 'words'), ('a', 2, 'words')"));
    EXPECT_EQ(foundInA(QStringLiteral("words")), (QList<Passage>{{QStringLiteral("...words..."), 2}}));
    EXPECT_EQ(found(QStringLiteral("words")).value(0).passages.size(), 2)
        << "the library search takes page 1";
}
