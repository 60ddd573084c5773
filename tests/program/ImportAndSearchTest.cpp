// The program as a researcher meets it: import a folder, then find things again.
#include "program/LibraryFixture.h"

using ImportAndSearch = LibraryFixture;

TEST_F(ImportAndSearch, FindsThePassageInAnImportedFolder)
{
    paper(QStringLiteral("attention.pdf"),
          {QStringLiteral("We propose a new simple network"),
           QStringLiteral("architecture, the Transformer, based on attention")},
          "Attention and Networks", "A. One, B. Two");
    paper(QStringLiteral("graphs.pdf"), {QStringLiteral("A walk over planar graphs")}, "Planar Graphs");

    const ProgramRun imported = importAll();
    EXPECT_EQ(imported.status, 0) << imported.err.toStdString();
    EXPECT_EQ(imported.json()[QLatin1String("indexed")].toArray().size(), 2);

    const ProgramRun found =
        m_program.run({QStringLiteral("search"), QStringLiteral("--json"), QStringLiteral("transform")});
    EXPECT_EQ(found.status, 0);
    ASSERT_EQ(found.json().array().size(), 1);
    const QJsonObject result = found.json().array().first().toObject();
    EXPECT_EQ(result[QLatin1String("title")].toString(), u"Attention and Networks");
    const QJsonObject passage = result[QLatin1String("passages")].toArray().first().toObject();
    EXPECT_EQ(passage[QLatin1String("page")].toInt(), 1);
    EXPECT_TRUE(passage[QLatin1String("text")].toString().contains(u"...Transformer..."));
}

TEST_F(ImportAndSearch, PrintsResultsToRead)
{
    paper(QStringLiteral("a.pdf"), {QStringLiteral("The zeta function of a graph")}, "Zeta Functions",
          "C. Three");
    importAll();
    const ProgramRun found = m_program.run({QStringLiteral("search"), QStringLiteral("zeta")});
    EXPECT_EQ(found.status, 0);
    EXPECT_TRUE(found.out.contains(u"Zeta Functions"));
    EXPECT_TRUE(found.out.contains(u"C. Three"));
    EXPECT_TRUE(found.out.contains(u"p. 1"));
    EXPECT_TRUE(found.out.contains(u"The zeta function of a graph"));
    EXPECT_FALSE(found.out.contains(u'\x1b')) << "no colours outside a terminal";
}

TEST_F(ImportAndSearch, SaysThatNothingMatchesAndCallsThatASuccess)
{
    paper(QStringLiteral("a.pdf"), {QStringLiteral("words")});
    importAll();
    const ProgramRun found = m_program.run({QStringLiteral("search"), QStringLiteral("absent")});
    EXPECT_EQ(found.status, 0);
    EXPECT_EQ(found.out, u"No papers match.\n");
    const ProgramRun asJson =
        m_program.run({QStringLiteral("search"), QStringLiteral("--json"), QStringLiteral("absent")});
    EXPECT_TRUE(asJson.json().isArray());
    EXPECT_TRUE(asJson.json().array().isEmpty());
}

TEST_F(ImportAndSearch, FiltersAloneListThePapersThatPass)
{
    paper(QStringLiteral("a.pdf"), {QStringLiteral("one")}, "Deep Attention", "A. Smith");
    paper(QStringLiteral("b.pdf"), {QStringLiteral("two")}, "Shallow Thoughts", "B. Jones");
    importAll();
    const ProgramRun found =
        m_program.run({QStringLiteral("search"), QStringLiteral("--json"), QStringLiteral("author:smith")});
    ASSERT_EQ(found.json().array().size(), 1);
    EXPECT_EQ(found.json().array().first()[QLatin1String("title")].toString(), u"Deep Attention");
}

TEST_F(ImportAndSearch, FiltersNarrowFullTextResults)
{
    paper(QStringLiteral("a.pdf"), {QStringLiteral("common ground")}, "First", "A. Smith");
    paper(QStringLiteral("b.pdf"), {QStringLiteral("common ground")}, "Second", "B. Jones");
    importAll();
    const ProgramRun found = m_program.run({QStringLiteral("search"), QStringLiteral("--json"),
                                            QStringLiteral("common"), QStringLiteral("author:jones")});
    ASSERT_EQ(found.json().array().size(), 1);
    EXPECT_EQ(found.json().array().first()[QLatin1String("title")].toString(), u"Second");
}

TEST_F(ImportAndSearch, ExplainsAQueryWithoutALibrary)
{
    const ProgramRun explained =
        m_program.run({QStringLiteral("search"), QStringLiteral("--explain"), QStringLiteral("--json"),
                       QStringLiteral("author:smith year:2019 deep AND attention")});
    EXPECT_EQ(explained.status, 0);
    const QJsonObject expected{{QStringLiteral("fullText"), QStringLiteral("deep AND attention")},
                               {QStringLiteral("title"), QJsonValue()},
                               {QStringLiteral("author"), QStringLiteral("smith")},
                               {QStringLiteral("filename"), QJsonValue()},
                               {QStringLiteral("year"), 2019},
                               {QStringLiteral("expression"), QStringLiteral("deep* AND attention*")}};
    EXPECT_EQ(explained.json().object(), expected);
    EXPECT_FALSE(QFile::exists(m_program.libraryPath()));
}

TEST_F(ImportAndSearch, FindsPassagesInsideOnePaperByPage)
{
    m_papers.write(QStringLiteral("long.pdf"), PdfBuilder()
                                                   .title("Long")
                                                   .page({QStringLiteral("a lemma first")})
                                                   .page({QStringLiteral("nothing here")})
                                                   .page({QStringLiteral("the lemma again")})
                                                   .build());
    importAll();
    const QString id = idsByTitle().value(QStringLiteral("Long"));
    const ProgramRun found = m_program.run(
        {QStringLiteral("find"), QStringLiteral("--json"), id.left(4), QStringLiteral("lemma")});
    ASSERT_EQ(found.json().array().size(), 2);
    EXPECT_EQ(found.json().array()[0][QLatin1String("page")].toInt(), 1);
    EXPECT_EQ(found.json().array()[1][QLatin1String("page")].toInt(), 3);
}

TEST_F(ImportAndSearch, SkipsFilesThatTheLibraryHas)
{
    const QString path = paper(QStringLiteral("a.pdf"), {QStringLiteral("words")});
    importAll();
    const ProgramRun again = importAll();
    EXPECT_EQ(again.status, 0);
    EXPECT_TRUE(again.json()[QLatin1String("indexed")].toArray().isEmpty());
    EXPECT_EQ(again.json()[QLatin1String("skipped")].toArray(), QJsonArray{path});
    const ProgramRun inWords = m_program.run({QStringLiteral("import"), path});
    EXPECT_EQ(inWords.out, u"0 indexed, 0 failed, 1 already in the library\n");
}

TEST_F(ImportAndSearch, GivesCopiesOfOneFileOnePaper)
{
    for (int copy = 0; copy < 12; ++copy)
        m_papers.write(QStringLiteral("copy%1.pdf").arg(copy),
                       PdfBuilder().title("Same").page({QStringLiteral("words")}).build());
    const ProgramRun imported = importAll();
    EXPECT_EQ(imported.status, 0) << imported.err.toStdString();
    EXPECT_EQ(m_program.run({QStringLiteral("list"), QStringLiteral("--json")}).json().array().size(), 1);
    EXPECT_EQ(QDir(m_program.dataFolder() + u"/covers").entryList(QDir::Files).size(), 1);
}

TEST_F(ImportAndSearch, FindsRightToLeftWordsAsTheyAreTyped)
{
    m_papers.write(QStringLiteral("arabic.pdf"),
                   PdfBuilder()
                       .title("Arabic")
                       .page({PdfBuilder::inVisualOrder(QStringLiteral("كتاب الرياضيات"))})
                       .build());
    importAll();
    const ProgramRun found =
        m_program.run({QStringLiteral("search"), QStringLiteral("--json"), QStringLiteral("الرياضيات")});
    ASSERT_EQ(found.json().array().size(), 1);
    EXPECT_EQ(found.json().array().first()[QLatin1String("title")].toString(), u"Arabic");
}

TEST_F(ImportAndSearch, ReadsAnEncryptedFileThatOpensWithoutAPassword)
{
    m_papers.write(QStringLiteral("open.pdf"), PdfBuilder()
                                                   .title("Open")
                                                   .lock(PdfLock::OpensWithoutPassword)
                                                   .page({QStringLiteral("hidden treasure")})
                                                   .build());
    EXPECT_EQ(importAll().status, 0);
    EXPECT_EQ(m_program.run({QStringLiteral("search"), QStringLiteral("--json"), QStringLiteral("treasure")})
                  .json()
                  .array()
                  .size(),
              1);
}
