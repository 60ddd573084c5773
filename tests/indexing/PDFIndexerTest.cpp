// What becomes of a file whose content is new to the library.
#include "IndexerFixture.h"
#include "platform/Sha256.h"
#include "support/Words.h"

namespace
{
using PDFIndexerTest = IndexerFixture;

TEST_F(PDFIndexerTest, StoresThePaperAndAnswersIt)
{
    useDocument([](FakePDFDocument &document) {
        document.pages = {"On homotopy", "and knot theory"};
        document.itsAttributes = {QStringLiteral("Knots"), QStringLiteral("A. One")};
    });
    const QString id = sha256Hex(m_pdf.toUtf8()).left(32);
    const Paper expected{.id = id,
                         .title = QStringLiteral("Knots"),
                         .authors = QStringLiteral("A. One"),
                         .year = {},
                         .pageCount = 2,
                         .coverPath = m_coversFolder + u'/' + id + u".jpg",
                         .filepath = m_pdf,
                         .tags = {QStringLiteral("Topology")}};
    EXPECT_EQ(index(m_pdf), expected);
    EXPECT_EQ(m_library.paperById(id).result().value(), expected);

    const Row row = onlyRow(QStringLiteral("SELECT * FROM papers"));
    EXPECT_EQ(row.text(QLatin1String("date_indexed")), QStringLiteral("2025-03-07T14:05:09Z"));
    EXPECT_EQ(row.text(QLatin1String("content_hash")), sha256Hex("content of the paper"));
    EXPECT_EQ(row.integer(QLatin1String("chunk_count")), 2);
    EXPECT_FALSE(row.contains(QLatin1String("year")));
}

TEST_F(PDFIndexerTest, StoresOneFullTextRowAChunk)
{
    usePages({"first page", "", words(1, 700)});
    const Paper paper = index(m_pdf);
    const auto rows = m_db.query(QStringLiteral("SELECT * FROM fts_papers ORDER BY rowid")).result();
    ASSERT_TRUE(rows);
    ASSERT_EQ(rows->size(), 3);
    const auto expectRow = [&](qsizetype index, qint64 page, const QByteArray &content) {
        EXPECT_EQ(rows->at(index).text(QLatin1String("paper_id")), paper.id);
        EXPECT_EQ(rows->at(index).integer(QLatin1String("page_num")), page);
        EXPECT_EQ(rows->at(index).text(QLatin1String("content")), QString::fromUtf8(content));
    };
    expectRow(0, 1, "first page");
    expectRow(1, 3, words(1, 700));
    expectRow(2, 3, words(641, 700));
}

TEST_F(PDFIndexerTest, StoresAPaperWithoutText)
{
    usePages({"", " \n"});
    EXPECT_EQ(index(m_pdf).pageCount, 2);
    EXPECT_EQ(onlyRow(QStringLiteral("SELECT chunk_count FROM papers")).integer(QLatin1String("chunk_count")),
              0);
    EXPECT_EQ(count(QStringLiteral("fts_papers")), 0);
}

TEST_F(PDFIndexerTest, StoresADocumentWithoutPages)
{
    usePages({});
    const Paper paper = index(m_pdf);
    EXPECT_EQ(paper.pageCount, 0);
    EXPECT_EQ(paper.coverPath, u"");
    EXPECT_TRUE(covers().isEmpty());
}

TEST_F(PDFIndexerTest, StoresNoTagsWhenNoTopicMatches)
{
    EXPECT_EQ(index(m_pdf).tags, QStringList());
    EXPECT_EQ(count(QStringLiteral("tags")), 0);
}

TEST_F(PDFIndexerTest, TakesTheFileNameWhenTheTitleIsEmpty)
{
    useDocument([](FakePDFDocument &document) {
        document.pages = {"words"};
        document.itsAttributes.title = QStringLiteral("");
    });
    EXPECT_EQ(index(m_pdf).title, u"Paper");
    EXPECT_EQ(index(m_pdf).authors, u"");
}

TEST_F(PDFIndexerTest, PrefersTheBookRecordOfAnISBN)
{
    useDocument([](FakePDFDocument &document) {
        document.pages = {"Contents", "ISBN 0-306-40615-2"};
        document.itsAttributes = {QStringLiteral("untitled"), QStringLiteral("admin")};
    });
    m_books.books.insert(
        QStringLiteral("0306406152"),
        {QStringLiteral("Learning"), QString(), 1987, {QStringLiteral("Machine learning -- Congresses")}});
    const Paper paper = index(m_pdf);
    EXPECT_EQ(paper.title, u"Learning");
    EXPECT_EQ(paper.authors, u"admin");
    EXPECT_EQ(paper.year, 1987);
    EXPECT_EQ(paper.tags, QStringList(QStringLiteral("AI & Machine Learning")));
}

TEST_F(PDFIndexerTest, KeepsWhatThePDFSaysWhenTheBookIsUnknown)
{
    usePages({"ISBN 0-306-40615-2"});
    const Paper paper = index(m_pdf);
    EXPECT_EQ(m_books.asked, QStringList(QStringLiteral("0306406152")));
    EXPECT_EQ(paper.title, u"Paper");
    EXPECT_FALSE(paper.year);
}

TEST_F(PDFIndexerTest, LooksForAnISBNInTheFirstThousandWords)
{
    usePages({words(1, 998), "ISBN 0306406152"});
    index(m_pdf);
    EXPECT_EQ(m_books.asked.size(), 1);
    usePages({words(1, 999), "ISBN 0306406152"});
    index(m_folder.write(QStringLiteral("other.pdf"), "other content"));
    EXPECT_EQ(m_books.asked.size(), 1);
}

TEST_F(PDFIndexerTest, ReplacesThePaperOfAPathWhoseContentIsNew)
{
    usePages({"old words", "homotopy and knot theory"});
    const Paper old = index(m_pdf);
    m_folder.write(QStringLiteral("Paper.pdf"), "new content");
    usePages({"new words"});
    const Paper renewed = index(m_pdf);
    EXPECT_EQ(renewed.id, old.id);
    EXPECT_EQ(renewed.tags, QStringList());
    EXPECT_EQ(count(QStringLiteral("papers")), 1);
    EXPECT_EQ(onlyRow(QStringLiteral("SELECT content FROM fts_papers")).text(QLatin1String("content")),
              QStringLiteral("new words"));
    EXPECT_EQ(covers(), QStringList(renewed.id + u".jpg"));
}

TEST_F(PDFIndexerTest, StoresAPaperWhosePictureCannotBeDrawn)
{
    useDocument([](FakePDFDocument &document) {
        document.pages = {"words"};
        document.picture = pdfError(PDFErrorCode::DeadlineExceeded);
    });
    const Paper paper = index(m_pdf);
    EXPECT_FALSE(paper.coverPath.isEmpty());
    EXPECT_FALSE(QFile::exists(paper.coverPath));
    EXPECT_EQ(count(QStringLiteral("fts_papers")), 1);
}
} // namespace
