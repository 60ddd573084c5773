// The indexer with the real engine and real PDFs.
#include "IndexerFixture.h"
#include "pdf/EngineDocument.h"
#include "support/PdfBuilder.h"
#include "support/Programs.h"

namespace
{
class PDFIndexerEngineTest : public IndexerFixture
{
protected:
    void SetUp() override { m_openPDF = engineOpener({.program = pdfEngineProgram()}); }
    QString write(const PdfBuilder &pdf, const QString &name = QStringLiteral("Real.pdf"))
    {
        return m_folder.write(name, pdf.build());
    }
};

TEST_F(PDFIndexerEngineTest, IndexesARealPDF)
{
    PdfBuilder pdf;
    pdf.title("On knots")
        .author("A. One")
        .page({QStringLiteral("homotopy of"), QStringLiteral("office hours")});
    pdf.page({QStringLiteral("knot theory")});
    const Paper paper = index(write(pdf));
    EXPECT_EQ(paper.title, u"On knots");
    EXPECT_EQ(paper.authors, u"A. One");
    EXPECT_EQ(paper.pageCount, 2);
    EXPECT_EQ(paper.tags, QStringList(QStringLiteral("Topology")));
    EXPECT_TRUE(QFile::exists(paper.coverPath));
    const auto rows = m_db.query(QStringLiteral("SELECT * FROM fts_papers ORDER BY page_num")).result();
    ASSERT_TRUE(rows && rows->size() == 2);
    EXPECT_EQ(rows->at(0).text(QLatin1String("content")), QStringLiteral("homotopy of office hours"));
    EXPECT_EQ(rows->at(1).integer(QLatin1String("page_num")), 2);
}

TEST_F(PDFIndexerEngineTest, IndexesAnEncryptedPDFThatOpensWithoutAPassword)
{
    PdfBuilder pdf;
    pdf.title("Locked").page({QStringLiteral("open words")}).lock(PdfLock::OpensWithoutPassword);
    EXPECT_EQ(index(write(pdf)).title, u"Locked");
    EXPECT_EQ(count(QStringLiteral("fts_papers")), 1);
}

TEST_F(PDFIndexerEngineTest, SaysThatAPDFNeedsItsPassword)
{
    PdfBuilder pdf;
    pdf.page({QStringLiteral("hidden words")}).lock(PdfLock::NeedsPassword);
    const Result<Paper> paper = tryIndex(write(pdf));
    ASSERT_FALSE(paper);
    EXPECT_EQ(paper.error().description, u"Failed to load PDF");
    EXPECT_EQ(paper.error().reason, pdfError(PDFErrorCode::NeedsPassword).message());
}

TEST_F(PDFIndexerEngineTest, SaysThatAFileIsNoPDF)
{
    for (const QByteArray &content : {QByteArray(), QByteArray("\x89PNG\r\n\x1a\n plain words")}) {
        const Result<Paper> paper = tryIndex(m_folder.write(QStringLiteral("no.pdf"), content));
        ASSERT_FALSE(paper);
        EXPECT_EQ(paper.error().description, u"Failed to load PDF");
        EXPECT_FALSE(paper.error().reason.isEmpty());
    }
}

TEST_F(PDFIndexerEngineTest, KeepsThePagesAroundABrokenOne)
{
    PdfBuilder pdf;
    pdf.page({QStringLiteral("first")});
    pdf.page(PdfPage{.lines = {QStringLiteral("second")}, .isBroken = true});
    pdf.page({QStringLiteral("third")});
    EXPECT_EQ(index(write(pdf)).pageCount, 3);
    const auto rows = m_db.query(QStringLiteral("SELECT * FROM fts_papers ORDER BY page_num")).result();
    ASSERT_TRUE(rows && rows->size() == 2);
    EXPECT_EQ(rows->at(1).integer(QLatin1String("page_num")), 3);
}

TEST_F(PDFIndexerEngineTest, DoesNotBelieveADocumentThatClaimsAThousandMillionPages)
{
    PdfBuilder pdf;
    pdf.page({QStringLiteral("the only page")}).claimPageCount(1'000'000'000);
    EXPECT_EQ(index(write(pdf)).pageCount, 1);
    EXPECT_EQ(count(QStringLiteral("papers")), 1);
}
} // namespace
