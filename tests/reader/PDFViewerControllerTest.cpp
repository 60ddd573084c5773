#include "reader/PDFViewerController.h"

#include "reader/HeldRequest.h"
#include "reader/ReaderFixture.h"

using namespace std::chrono_literals;

namespace
{
class PDFViewerControllerTest : public ::testing::Test, protected ReaderFixture
{
protected:
    PDFViewerController &reader() { return *controller; }
};
} // namespace

TEST_F(PDFViewerControllerTest, StartsEmpty)
{
    EXPECT_EQ(reader().currentPage, 1);
    EXPECT_EQ(reader().pageCount, 0);
    EXPECT_TRUE(reader().outline.value().isEmpty());
    EXPECT_FALSE(reader().isSearching);
    EXPECT_FALSE(reader().canGoBack);
    EXPECT_FALSE(reader().request());
}

TEST_F(PDFViewerControllerTest, ShowsPagesOutlineAndLabelsOfADocument)
{
    PDFOutlineItem leaf{std::nullopt, PDFDestination{3, {10, 20}}, {}};
    outline = std::vector<PDFOutlineItem>{{QStringLiteral("Intro"), std::nullopt, {leaf}},
                                          {QStringLiteral("End"), std::nullopt, {}}};
    labels = PDFPageLabels({{0, PDFPageLabels::Style::LowerRoman, 1, {}}});
    show(7);
    EXPECT_EQ(view.document(), &document);
    EXPECT_EQ(reader().pageCount, 7);
    EXPECT_EQ(reader().pageLabels.value().label(1), u"ii");
    const QList<OutlineElement> shown = reader().outline;
    ASSERT_EQ(shown.size(), 2);
    EXPECT_EQ(shown[0].label, u"Intro");
    EXPECT_EQ(shown[1].label, u"End");
    EXPECT_FALSE(shown[0].destination);
    ASSERT_EQ(shown[0].children.size(), 1);
    EXPECT_EQ(shown[0].children[0].destination, (PDFPosition{3, {10, 20}}));
    EXPECT_NE(shown[0].id, shown[1].id);
}

TEST_F(PDFViewerControllerTest, ShowsAnEmptyOutlineOfADocumentWithoutOne)
{
    show();
    EXPECT_TRUE(reader().outline.value().isEmpty());
}

TEST_F(PDFViewerControllerTest, CallsAnOutlineItemWithoutALabelPage)
{
    outline = std::vector<PDFOutlineItem>{{std::nullopt, std::nullopt, {}}};
    show();
    ASSERT_EQ(reader().outline.value().size(), 1);
    EXPECT_EQ(reader().outline.value().first().label, u"Page");
}

TEST_F(PDFViewerControllerTest, ReadsADocumentWithoutTheOutlineThatEndsEveryEngine)
{
    outline = pdfError(PDFErrorCode::EngineFailed);
    for (int tries = 0; tries < 3; ++tries) {
        show();
        EXPECT_FALSE(document.isOpen());
    }
    show();
    const auto behind =
        document.ask(ReaderDocument::Priority::Ahead, {}, [](PDFDocument &, auto) { return Result<void>(); });
    EXPECT_TRUE(behind.result());
    EXPECT_TRUE(document.isOpen()) << "nobody asked for the outline again";
    EXPECT_EQ(reader().pageCount, 20);

    outline = std::vector<PDFOutlineItem>{{QStringLiteral("Intro"), std::nullopt, {}}};
    ReaderDocument other(
        [this](auto, auto) -> Result<std::unique_ptr<PDFDocument>> { return makeDocument(); });
    ASSERT_TRUE(other.open().result());
    QCoro::waitFor(reader().load(other));
    EXPECT_EQ(reader().outline.value().size(), 1) << "another document is not to blame";
    view.setDocument(nullptr);
}

TEST_F(PDFViewerControllerTest, CountsTheCurrentPageFromOne)
{
    show();
    view.hasForward = true;
    view.scrollTo(4);
    EXPECT_EQ(reader().currentPage, 5);
    EXPECT_TRUE(reader().canGoForward);
    EXPECT_FALSE(reader().canGoBack);
}

TEST_F(PDFViewerControllerTest, ReportsThePageShownToTheSession)
{
    QList<std::pair<QUuid, qint64>> reports;
    QObject::connect(&reader(), &PDFViewerController::pageShown, &reader(),
                     [&](const QUuid &id, qint64 page) {
                         reports.append({id, page});
                     });
    show();
    view.scrollTo(1);
    EXPECT_TRUE(reports.isEmpty()); // without a request there is no window to remember
    const PDFOpenRequest request = requestOf(QStringLiteral("p"));
    reader().setRequest(request);
    view.scrollTo(2);
    ASSERT_EQ(reports.size(), 1);
    EXPECT_EQ(reports.first(), std::pair(request.id, qint64(3)));
    view.currentPage = 3;
    reader().refreshNavigation();
    EXPECT_EQ(reader().currentPage, 4);
    EXPECT_EQ(reports.size(), 1);
}

TEST_F(PDFViewerControllerTest, IgnoresPageChangesWithoutADocument)
{
    view.hasBack = true;
    view.scrollTo(8);
    EXPECT_EQ(reader().currentPage, 1);
    EXPECT_FALSE(reader().canGoBack);
}

TEST_F(PDFViewerControllerTest, KnowsWhetherTextIsSelected)
{
    const PDFPageText text = PlacedText().line(QStringLiteral("alpha beta"), {0, 0}).page();
    show();
    view.select(PDFSelection(0, text, {0, 5}));
    EXPECT_TRUE(reader().hasSelection);
    view.select(PDFSelection());
    EXPECT_FALSE(reader().hasSelection);
    view.select(PDFSelection(0, text, {0, 5}));
    view.select(std::nullopt);
    EXPECT_FALSE(reader().hasSelection);
}

TEST_F(PDFViewerControllerTest, GoesToThePageTypedIntoThePageField)
{
    show(20);
    reader().goToPageText(QStringLiteral("+7"));
    reader().goToPageText(QStringLiteral("20"));
    reader().goToPageText(QStringLiteral("1"));
    EXPECT_EQ(view.jumps,
              (QStringList{QStringLiteral("page 6"), QStringLiteral("page 19"), QStringLiteral("page 0")}));
}

TEST_F(PDFViewerControllerTest, LeavesThePageForTextThatIsNone)
{
    show(20);
    for (const char *text : {"0", "-3", "21", "abc", "", " 4", "4 ", "4.0", "99999999999999999999"})
        reader().goToPageText(QLatin1String(text));
    EXPECT_TRUE(view.jumps.isEmpty());
}

TEST_F(PDFViewerControllerTest, GoesToNoPageWithoutADocument)
{
    reader().goToPageText(QStringLiteral("1"));
    EXPECT_TRUE(view.jumps.isEmpty());
}

TEST_F(PDFViewerControllerTest, GoesToPageOneFiftyMillisecondsAfterItIsShown)
{
    show();
    reader().navigateFirst();
    clock.advance(49ms);
    EXPECT_TRUE(view.jumps.isEmpty());
    clock.advance(1ms);
    EXPECT_EQ(view.jumps, QStringList{QStringLiteral("page 0")});
}

TEST_F(PDFViewerControllerTest, GoesToThePageOfItsRequest)
{
    PDFOpenRequest request = requestOf(QStringLiteral("p"));
    request.page = 12;
    reader().setRequest(request);
    show();
    reader().navigateFirst();
    clock.advance(50ms);
    EXPECT_EQ(view.jumps, QStringList{QStringLiteral("page 11")});
}

TEST_F(PDFViewerControllerTest, StaysWhereItIsForAPageThatTheDocumentDoesNotHave)
{
    PDFOpenRequest request = requestOf(QStringLiteral("p"));
    request.page = 21;
    reader().setRequest(request);
    show(20);
    reader().navigateFirst();
    clock.advance(50ms);
    EXPECT_TRUE(view.jumps.isEmpty());
}

TEST_F(PDFViewerControllerTest, GoesNowhereAtFirstWithoutADocument)
{
    reader().navigateFirst();
    clock.advance(50ms);
    EXPECT_TRUE(view.jumps.isEmpty());
}

TEST_F(PDFViewerControllerTest, SearchesWhenTheDocumentComesLaterThanTheRequest)
{
    PDFOpenRequest request = requestOf(QStringLiteral("p"));
    request.searchText = QStringLiteral("kernel");
    reader().setRequest(request);
    EXPECT_TRUE(queries.isEmpty());
    show();
    EXPECT_EQ(queries, QStringList{QStringLiteral("p: kernel")});
}

TEST_F(PDFViewerControllerTest, LightsThePassageOfItsRequestOnArrival)
{
    texts[2] = PlacedText().line(QStringLiteral("pay attention please"), {50, 100}).page();
    PDFOpenRequest request = requestOf(QStringLiteral("p"));
    request.page = 3;
    request.highlightText = QStringLiteral("Attention");
    request.searchText = QStringLiteral("please");
    reader().setRequest(request);
    show();
    reader().navigateFirst();
    clock.advance(50ms);
    EXPECT_EQ(view.nextJump(), u"selection attention");
    EXPECT_EQ(view.calls, QStringList{QStringLiteral("animated selection")});
    EXPECT_EQ(view.selection->pages(), QList<qint64>{2});
}

TEST_F(PDFViewerControllerTest, LightsTheSearchTextWhenItsRequestHasNoPassage)
{
    texts[2] = PlacedText().line(QStringLiteral("pay attention please"), {50, 100}).page();
    PDFOpenRequest request = requestOf(QStringLiteral("p"));
    request.page = 3;
    request.searchText = QStringLiteral("please");
    reader().setRequest(request);
    show();
    reader().navigateFirst();
    clock.advance(50ms);
    EXPECT_EQ(view.nextJump(), u"selection please");
}

TEST_F(PDFViewerControllerTest, ShowsThePageOfARequestWhosePassageIsEmpty)
{
    texts[2] = PlacedText().line(QStringLiteral("pay attention please"), {50, 100}).page();
    PDFOpenRequest request = requestOf(QStringLiteral("p"));
    request.page = 3;
    request.highlightText = QString();
    request.searchText = QStringLiteral("please");
    reader().setRequest(request);
    show();
    reader().navigateFirst();
    clock.advance(50ms);
    EXPECT_EQ(view.jumps, QStringList{QStringLiteral("page 2")});
}

TEST_F(PDFViewerControllerTest, HasNoWayBackFromWhereItArrived)
{
    texts[2] = PlacedText().line(QStringLiteral("alpha"), {50, 100}).page();
    PDFOpenRequest request = requestOf(QStringLiteral("p"));
    request.page = 3;
    for (const std::optional<QString> &passage :
         {std::optional<QString>(), std::optional(QStringLiteral("alpha")),
          std::optional(QStringLiteral("absent"))}) {
        request.highlightText = passage;
        reader().setRequest(request);
        show();
        reader().navigateFirst();
        clock.advance(50ms);
        EXPECT_FALSE(view.nextJump().isEmpty());
        EXPECT_FALSE(view.hasBack) << passage.value_or(QString()).toStdString();
        EXPECT_FALSE(reader().canGoBack);
    }
    reader().goToPageText(QStringLiteral("9"));
    EXPECT_TRUE(reader().canGoBack);
}

TEST_F(PDFViewerControllerTest, GoesNowhereOnceAPersonWentElsewhereFirst)
{
    PDFOpenRequest request = requestOf(QStringLiteral("p"));
    request.page = 3;
    reader().setRequest(request);
    show();
    reader().navigateFirst();
    clock.advance(49ms);
    view.goToPosition({7, {}}); // as a click into the outline does
    clock.advance(1s);
    EXPECT_EQ(view.jumps, QStringList{QStringLiteral("position on 7")});
    EXPECT_TRUE(reader().canGoBack);
}

TEST_F(PDFViewerControllerTest, ShowsThePageWhenAPassageIsScatteredOverIt)
{
    texts[2] = PlacedText()
                   .line(QStringLiteral("alpha"), {50, 50})
                   .line(QStringLiteral("beta"), {50, 400})
                   .line(QStringLiteral("gamma"), {50, 700})
                   .page();
    show();
    reader().highlight(QStringLiteral("alpha beta gamma"), 3);
    EXPECT_EQ(view.nextJump(), u"page 2");
    EXPECT_FALSE(view.selection);
}

TEST_F(PDFViewerControllerTest, ShowsThePageForAPassageOfShortWords)
{
    texts[2] = PlacedText().line(QStringLiteral("as it is"), {50, 50}).page();
    show();
    reader().highlight(QStringLiteral("as it is"), 3);
    EXPECT_EQ(view.nextJump(), u"page 2");
}

TEST_F(PDFViewerControllerTest, HighlightsNothingOnAPageThatIsNotThere)
{
    show(20);
    QCoro::waitFor(reader().highlight(QStringLiteral("alpha"), 0));
    QCoro::waitFor(reader().highlight(QStringLiteral("alpha"), 21));
    EXPECT_TRUE(view.jumps.isEmpty());
}

TEST_F(PDFViewerControllerTest, ShowsOnlyTheLatestOfTwoPassages)
{
    texts[2] = PlacedText().line(QStringLiteral("alpha"), {50, 100}).page();
    texts[5] = PlacedText().line(QStringLiteral("beta"), {50, 100}).page();
    show();
    HeldRequest held(document); // neither is answered before both are asked for
    reader().highlight(QStringLiteral("alpha"), 3);
    auto latest = reader().highlight(QStringLiteral("beta"), 6);
    held.letGo();
    QCoro::waitFor(std::move(latest));
    QCoreApplication::processEvents();
    EXPECT_EQ(view.jumps, QStringList{QStringLiteral("selection beta")});
}

TEST_F(PDFViewerControllerTest, WaitsForNoPassageOnceAPersonGoesElsewhere)
{
    texts[2] = PlacedText().line(QStringLiteral("alpha"), {50, 100}).page();
    show();
    const std::map<QString, std::function<void()>> ways{
        {QStringLiteral("page 8"),
         [this] {
             reader().goToPageText(QStringLiteral("9"));
         }},
        {QStringLiteral("position on 7"),
         [this] {
             view.goToPosition({7, {}});
         }}, // outline and links
    };
    for (const auto &[where, goThere] : ways) {
        view.jumps.clear();
        HeldRequest held(document);
        auto passage = reader().highlight(QStringLiteral("alpha"), 3);
        goThere();
        held.letGo();
        EXPECT_FALSE(QCoro::waitFor(std::move(passage)));
        EXPECT_EQ(view.jumps, QStringList{where});
        EXPECT_FALSE(view.selection);
    }
}

TEST_F(PDFViewerControllerTest, ForgetsWhatItAwaitsWhenItEnds)
{
    texts[2] = PlacedText().line(QStringLiteral("alpha"), {50, 100}).page();
    show();
    HeldRequest held(document);
    reader().highlight(QStringLiteral("alpha"), 3);
    reader().navigateFirst();
    controller.reset();
    held.letGo();
    const auto behind =
        document.ask(ReaderDocument::Priority::Ahead, {}, [](PDFDocument &, auto) { return Result<void>(); });
    EXPECT_TRUE(behind.result());
    clock.advance(1s);
    QCoreApplication::processEvents();
    EXPECT_TRUE(view.jumps.isEmpty());
}
