// What a reader window asks of the rest of the program and of the desktop.
#include "reader/ReaderWindowFixture.h"

namespace
{
class PDFViewerWindowOutside : public ReaderWindowTest
{
protected:
    QList<QUrl> addresses; ///< handed to the desktop

    void SetUp() override
    {
        services.openAddress = [this](const QUrl &address) {
            addresses.append(address);
        };
    }
};
} // namespace

TEST_F(PDFViewerWindowOutside, SearchesTheLibraryForTheSelection)
{
    PDFOpenRequest request =
        requestFor(writePdf(QStringLiteral("a.pdf"), {{QStringLiteral("on random trees")}}));
    request.highlightText = QStringLiteral("random trees");
    openAndArrive(request);
    awaitValue(reader().hasSelection, true);
    window->view().searchInLibraryAction()->trigger();
    EXPECT_EQ(librarySearches, QStringList{QStringLiteral("random trees")});
}

TEST_F(PDFViewerWindowOutside, OpensALinkToTheWeb)
{
    openAndArrive(requestFor(library.folder.write(
        QStringLiteral("link.pdf"),
        PdfBuilder()
            .page({.mediaBox = PdfBox{0, 0, 600, 800},
                   .entries = "/Annots [<< /Type /Annot /Subtype /Link /Rect [0 0 600 800] "
                              "/A << /S /URI /URI (https://example.org/paper) >> >>]"})
            .build())));
    while (!window->view().contents().links(0)) // they come in their turn
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    QWidget *pages = window->view().viewport();
    QTest::mouseClick(pages, Qt::LeftButton, {}, pages->rect().center());
    EXPECT_EQ(addresses, QList{QUrl(QStringLiteral("https://example.org/paper"))});
    EXPECT_FALSE(actions().back->isEnabled());
}
