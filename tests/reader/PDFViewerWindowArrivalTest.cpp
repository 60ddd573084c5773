// Where a reader window arrives, on pages as a real engine reads them.
#include "reader/ReaderWindowFixture.h"

namespace
{

class PDFViewerWindowArrival : public ReaderWindowTest
{
protected:
    /// A request for the second page of a document; `lines` stand on that page.
    PDFOpenRequest secondPage(const QStringList &lines) const
    {
        PDFOpenRequest request = requestFor(writePdf(
            QStringLiteral("paper.pdf"), {{QStringLiteral("a title")}, lines, {QStringLiteral("an end")}}));
        request.page = 2;
        return request;
    }

    /// What is lit once the window has arrived.
    QString litIn(const PDFOpenRequest &request)
    {
        openAndArrive(request);
        awaitValue(reader().hasSelection, true);
        rest();
        EXPECT_EQ(reader().currentPage, 2);
        return window->view().currentSelection()->string();
    }

    /// Waits until the window has gone where its request asked for, though nothing is lit there.
    void arriveUnlit(const PDFOpenRequest &request)
    {
        openAndArrive(request);
        awaitValue(reader().currentPage, qint64(2));
        EXPECT_FALSE(reader().hasSelection);
    }
};

} // namespace

TEST_F(PDFViewerWindowArrival, LightsThePassageRatherThanTheSearchText)
{
    PDFOpenRequest request = secondPage({QStringLiteral("kernels make graphs linear")});
    request.highlightText = QStringLiteral("...kernels... make");
    request.searchText = QStringLiteral("linear");
    EXPECT_EQ(litIn(request), u"kernels make");
}

TEST_F(PDFViewerWindowArrival, LightsTheSearchTextWhereThereIsNoPassage)
{
    PDFOpenRequest request = secondPage({QStringLiteral("kernels make graphs linear")});
    request.searchText = QStringLiteral("GRAPHS");
    EXPECT_EQ(litIn(request), u"graphs");
}

TEST_F(PDFViewerWindowArrival, LightsAPassageAcrossALineBreak)
{
    PDFOpenRequest request =
        secondPage({QStringLiteral("we show that every kernel"), QStringLiteral("makes graphs linear")});
    request.highlightText = QStringLiteral("kernel makes graphs");
    EXPECT_EQ(litIn(request).simplified(), u"kernel makes graphs");
}

TEST_F(PDFViewerWindowArrival, LightsAPassageWithAWordThatTheLineEndHyphenates)
{
    const QStringList lines = {QStringLiteral("groups of homo-"), QStringLiteral("topy are finite here")};
    PDFOpenRequest request = secondPage(lines);
    // As it stands on the page, and as a person writes it.
    request.highlightText = QStringLiteral("groups homo- topy finite");
    EXPECT_EQ(litIn(request).simplified(), u"groups homo topy finite");
    request.highlightText = QStringLiteral("groups homotopy finite");
    EXPECT_EQ(litIn(request).simplified(), u"groups finite");
}

TEST_F(PDFViewerWindowArrival, LightsWhereTheWordsStandTogether)
{
    QStringList lines = {QStringLiteral("graphs here")};
    lines += QStringList(10, QStringLiteral("nothing"));
    lines += {QStringLiteral("kernels and graphs")};
    PDFOpenRequest request = secondPage(lines);
    request.highlightText = QStringLiteral("kernels graphs");
    EXPECT_EQ(litIn(request).simplified(), u"kernels graphs");
    const QList<QRectF> lit = window->view().currentSelection()->lineRectangles(1);
    ASSERT_EQ(lit.size(), 2);
    EXPECT_EQ(lit[0].center().y(), lit[1].center().y()) << "both on the last line";
}

TEST_F(PDFViewerWindowArrival, ShowsThePageWhoseWordsAreScattered)
{
    QStringList lines = {QStringLiteral("alpha")};
    for (const char *word : {"beta", "gamma"}) {
        lines += QStringList(17, QStringLiteral("nothing"));
        lines += QLatin1String(word);
    }
    PDFOpenRequest request = secondPage(lines);
    request.highlightText = QStringLiteral("alpha beta gamma");
    arriveUnlit(request);
}

TEST_F(PDFViewerWindowArrival, ShowsThePageForWordsOfOneOrTwoLetters)
{
    PDFOpenRequest request = secondPage({QStringLiteral("as it is")});
    request.highlightText = QStringLiteral("as it is");
    arriveUnlit(request);
}

TEST_F(PDFViewerWindowArrival, StartsAtPageOneWithoutAPage)
{
    openAndArrive(requestFor(secondPage({QStringLiteral("text")}).url.toLocalFile()));
    EXPECT_EQ(reader().currentPage, 1);
}

TEST_F(PDFViewerWindowArrival, TellsTheSessionNoPageBefore)
{
    PDFOpenRequest request = secondPage({QStringLiteral("kernels make graphs linear")});
    request.highlightText = QStringLiteral("graphs");
    window = openPDFViewerWindow(request, services);
    QSignalSpy changes(window, &PDFViewerWindow::requestChanged);
    awaitStage(Stage::Open);
    EXPECT_EQ(reader().currentPage, 1);
    EXPECT_TRUE(changes.isEmpty());
    EXPECT_EQ(window->request(), request);
}

TEST_F(PDFViewerWindowArrival, LeavesNoWayBackToAPageThatNobodySaw)
{
    PDFOpenRequest request = secondPage({QStringLiteral("kernels make graphs linear")});
    request.highlightText = QStringLiteral("graphs");
    litIn(request);
    EXPECT_FALSE(actions().back->isEnabled());
    request.highlightText.reset();
    openAndArrive(request);
    EXPECT_EQ(reader().currentPage, 2);
    EXPECT_FALSE(actions().back->isEnabled());
}
