#include "reader/PagePrinter.h"

#include "reader/DocumentOpening.h"
#include "reader/ReaderDocument.h"
#include "support/FakePDFDocument.h"
#include "support/PdfBuilder.h"
#include "support/Printing.h"
#include "support/TemporaryFolder.h"

#include <QPrinter>
#include <gtest/gtest.h>

namespace
{

class PagePrinterTest : public ::testing::Test
{
protected:
    PagePrinterTest()
    {
        PdfBuilder pdf;
        for (int page = 0; page < 5; ++page)
            pdf.page({.lines = {QStringLiteral("text")},
                      .mediaBox = PdfBox{0, 0, page == 2 ? 400.0 : 200.0, 300},
                      .drawing = "1 0 0 rg 0 0 400 300 re f"});
        document = engineReaderDocument(folder.write(QStringLiteral("in.pdf"), pdf.build()));
        EXPECT_TRUE(document->open().result());
        printer->setOutputFormat(QPrinter::PdfFormat);
        printer->setOutputFileName(out);
        printer->setResolution(72);
    }

    /// Pages of what was printed.
    qint64 printedPages() const
    {
        const auto printed = engineReaderDocument(out);
        EXPECT_TRUE(printed->open().result());
        return printed->pageCount();
    }

    /// Prints five pages, of which the third fails in this way.
    std::optional<QString> printWith(const Error &error)
    {
        ReaderDocument failing([&error](auto, auto) -> Result<std::unique_ptr<PDFDocument>> {
            auto fake = std::make_unique<FakePDFDocument>();
            fake->claimedPages = 5;
            fake->failingPages.emplace(2, error);
            return std::unique_ptr<PDFDocument>(std::move(fake));
        });
        EXPECT_TRUE(failing.open().result());
        PagePrinter pages(failing, printer);
        return QCoro::waitFor(pages.print());
    }

    TemporaryFolder folder;
    QString out = folder.path(QStringLiteral("out.pdf"));
    std::unique_ptr<ReaderDocument> document;
    std::shared_ptr<QPrinter> printer = std::make_shared<QPrinter>();
};

} // namespace

TEST_F(PagePrinterTest, PrintsEveryPage)
{
    PagePrinter pages(*document, printer);
    QList<qint64> progress;
    QObject::connect(&pages, &PagePrinter::progressed, &pages, [&](qint64 done) { progress.append(done); });
    EXPECT_EQ(pages.pageCount(), 5);
    EXPECT_EQ(QCoro::waitFor(pages.print()), std::nullopt);
    EXPECT_EQ(progress, (QList<qint64>{1, 2, 3, 4, 5}));
    EXPECT_EQ(printedPages(), 5);
}

TEST_F(PagePrinterTest, PrintsWhatThePagesShow)
{
    PagePrinter pages(*document, printer);
    QCoro::waitFor(pages.print());
    const auto printed = engineReaderDocument(out);
    ASSERT_TRUE(printed->open().result());
    const auto asking = printed->ask(ReaderDocument::Priority::Visible, {},
                                     [](PDFDocument &pdf, auto) { return pdf.thumbnail(0, 60, 60); });
    const PDFBitmap picture = *asking.result();
    const qsizetype middle = (qsizetype(picture.height / 2) * picture.width + picture.width / 2) * 3;
    EXPECT_GT(uchar(picture.pixels[middle]), 200); // red
    EXPECT_LT(uchar(picture.pixels[middle + 1]), 50);
}

TEST_F(PagePrinterTest, PrintsTheRangeThatIsAskedFor)
{
    printer->setFromTo(2, 3);
    PagePrinter pages(*document, printer);
    EXPECT_EQ(QCoro::waitFor(pages.print()), std::nullopt);
    EXPECT_EQ(printedPages(), 2);
}

TEST_F(PagePrinterTest, EndsWhenItIsCancelled)
{
    PagePrinter pages(*document, printer);
    QList<qint64> progress;
    QObject::connect(&pages, &PagePrinter::progressed, &pages, [&](qint64 done) {
        progress.append(done);
        pages.cancel();
    });
    EXPECT_EQ(QCoro::waitFor(pages.print()), std::nullopt);
    EXPECT_EQ(progress, QList<qint64>{1});
}

TEST_F(PagePrinterTest, SaysWhereItEndedWhenTheEngineIsLost)
{
    EXPECT_EQ(printWith(pdfError(PDFErrorCode::EngineFailed)),
              QStringLiteral("The document was lost before page 3 was printed."));
}

TEST_F(PagePrinterTest, SaysWhereItEndedWhenTheDocumentIsClosed)
{
    PagePrinter pages(*document, printer);
    QObject::connect(&pages, &PagePrinter::progressed, &pages, [&](qint64 done) {
        if (done == 2)
            document.reset();
    });
    EXPECT_EQ(QCoro::waitFor(pages.print()),
              QStringLiteral("The document was lost before page 3 was printed."));
}

TEST_F(PagePrinterTest, PrintsTheOthersWhenOnePageCannotBeHad)
{
    EXPECT_EQ(printWith(pdfError(PDFErrorCode::PageUnavailable)), std::nullopt);
    EXPECT_EQ(printedPages(), 5);
}
