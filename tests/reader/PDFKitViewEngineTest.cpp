#include "pdf/EngineDocument.h"
#include "platform/InputFile.h"
#include "reader/ReaderDocument.h"
#include "reader/ReaderViewFixture.h"
#include "support/PdfBuilder.h"
#include "support/Programs.h"
#include "support/TemporaryFolder.h"

#include <QEventLoop>

namespace
{
/// A view of a real file, through an engine.
class PDFKitViewEngineTest : public ReaderViewTest
{
protected:
    void open(const QByteArray &pdf)
    {
        const QString path = m_folder.write(QStringLiteral("sample.pdf"), pdf);
        m_document = std::make_unique<ReaderDocument>(
            [path](const std::optional<QString> &,
                   std::stop_token stop) -> Result<std::unique_ptr<PDFDocument>> {
                const Result<InputFile> file = InputFile::open(path);
                if (!file)
                    return file.error();
                EngineOptions options;
                options.program = pdfEngineProgram();
                return EngineDocument::open(*file, options, stop);
            });
        ASSERT_TRUE(m_document->open().result());
        view.setDocument(m_document.get());
        untilSharp();
    }

    /// Lets the engine answer until all that is visible is drawn.
    void untilSharp()
    {
        if (view.isSharp())
            return;
        QEventLoop loop;
        QObject::connect(&view, &PDFKitView::becameSharp, &loop, &QEventLoop::quit);
        loop.exec();
    }

    /// Lets the engine answer until the selection has come.
    void untilSelected()
    {
        if (view.currentSelection())
            return;
        QEventLoop loop;
        view.selectionChanged = [this, &loop] {
            if (view.currentSelection())
                loop.quit();
        };
        loop.exec();
        view.selectionChanged = nullptr;
    }

    /// Of the part of page 1 (points) that is shown.
    QColor colorAt(QPointF point) { return picture().pixelColor(pointOf(0, point)); }

    std::unique_ptr<ReaderDocument> m_document;

private:
    TemporaryFolder m_folder;
};

QByteArray redCornerAndWords()
{
    return PdfBuilder()
        .page({.lines = {QStringLiteral("words on paper")},
               .mediaBox = PdfBox{0, 0, 600, 800},
               .drawing = "1 0 0 rg 0 0 100 100 re f"})
        .page(QStringList{QStringLiteral("second page")})
        .build();
}
} // namespace

TEST_F(PDFKitViewEngineTest, ShowsAPage)
{
    open(redCornerAndWords());
    EXPECT_EQ(view.viewpoint().layout().pageCount(), 2);
    EXPECT_EQ(viewpoint().pageRect(0), QRectF(12, 12, 600, 800));
    view.scrollBy({0, 400}, PDFKitView::Motion::Instant);
    untilSharp();
    EXPECT_EQ(colorAt({50, 750}), QColor(Qt::red));
    EXPECT_EQ(colorAt({150, 750}), QColor(Qt::white));
}

TEST_F(PDFKitViewEngineTest, HasItsDocumentWhenItTellsOfThePage)
{
    const ReaderDocument *document = nullptr;
    view.pageChanged = [&] {
        document = view.document();
    };
    open(redCornerAndWords());
    EXPECT_NE(document, nullptr);
    EXPECT_EQ(document, view.document());
}

TEST_F(PDFKitViewEngineTest, LetsGoOfADocumentWhoseAnswersAreStillToCome)
{
    open(redCornerAndWords());
    for (int i = 0; i < 20; ++i) {
        view.zoomIn();
        view.setDocument(nullptr);
        view.setDocument(m_document.get());
    }
    untilSharp();
    EXPECT_EQ(view.document(), m_document.get());
}

TEST_F(PDFKitViewEngineTest, ShowsATurnedPage)
{
    open(redCornerAndWords());
    view.rotatePages(PDFKitView::Turn::Right);
    view.goToPage(0);
    untilSharp();
    EXPECT_EQ(colorAt({50, 750}), QColor(Qt::red));
    EXPECT_LT(pointOf(0, {50, 750}).y(), 150) << "the lower left corner is at the upper left";
}

TEST_F(PDFKitViewEngineTest, ShowsADarkPage)
{
    open(redCornerAndWords());
    view.setDarkMode(true);
    untilSharp();
    EXPECT_EQ(colorAt({300, 300}), QColor(Qt::black));
}

TEST_F(PDFKitViewEngineTest, ShowsAPartOfAPageAtEightHundredPercent)
{
    open(redCornerAndWords());
    view.zoomBy(8 * 96 / 72.0, {0, 0});
    view.goToPosition({0, {60, 690}});
    untilSharp();
    EXPECT_EQ(colorAt({95, 705}), QColor(Qt::red));
    EXPECT_EQ(colorAt({105, 705}), QColor(Qt::white));
    EXPECT_EQ(colorAt({95, 695}), QColor(Qt::white));
    EXPECT_LE(view.cache().bytes(), kPageCacheBytes);
}

TEST_F(PDFKitViewEngineTest, SelectsWhereTheWordsStand)
{
    open(redCornerAndWords());
    view.selectAll();
    untilSelected();
    ASSERT_TRUE(view.currentSelection());
    const QRectF line = view.currentSelection()->lineRectangles(0).value(0);
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, pointOf(0, line.center()));
    EXPECT_EQ(view.currentSelection()->string(), QStringLiteral("on"));
}
