// What a reader window asks of the real engine, through the client.
#include "EngineSample.h"
#include "FakeEngine.h"
#include "support/Programs.h"

#include <QDir>
#include <fcntl.h>
#include <limits>
#include <sys/stat.h>
#include <thread>

namespace
{
using namespace std::chrono_literals;

const PdfPage kRedQuarter = {.lines = {QStringLiteral("Word")},
                             .mediaBox = PdfBox{0, 0, 100, 200},
                             .drawing = "1 0 0 rg 0 0 50 100 re f"};

std::unique_ptr<PDFDocument> opened(const PdfBuilder &builder, const EngineDeadlines &deadlines = {})
{
    return Sample(builder.build()).open(pdfEngineProgram(), deadlines).value();
}

/// A page that no engine gets to the end of: forms that draw each other, ten times on each of 20 levels.
PdfBuilder endless()
{
    constexpr int kLevels = 20;
    const int first = PdfBuilder::kFirstFreeObject;
    PdfBuilder builder;
    const auto reference = [&](int level) -> QByteArray {
        return QByteArray("/Resources<</XObject<</X ") + QByteArray::number(first + level) + " 0 R>>>>";
    };
    builder.page(PdfPage{.drawing = "/X Do", .entries = reference(0)}).page({QStringLiteral("Second")});
    const QByteArray content = QByteArray("/X Do ").repeated(10);
    for (int level = 0; level < kLevels; ++level) {
        builder.object(first + level, "<</Type/XObject/Subtype/Form/BBox[0 0 600 800]/Length " +
                                          QByteArray::number(content.size()) + reference(level + 1) +
                                          ">>stream\n" + content + "\nendstream");
    }
    return builder;
}
} // namespace

TEST(EngineReader, KnowsTheShapesOfPages)
{
    const auto document =
        opened(PdfBuilder()
                   .page(PdfPage{.mediaBox = PdfBox{0, 0, 100, 200}, .artBox = PdfBox{10, 20, 30, 40}})
                   .page(PdfPage{.mediaBox = PdfBox{0, 0, 100, 200}, .rotation = 270}));
    const QRectF all(0, 0, 100, 200);
    EXPECT_EQ(document->pageGeometry(0).value(),
              (PDFPageGeometry{{100, 200}, 0, all, all, all, QRectF(10, 160, 20, 20)}));
    EXPECT_EQ(document->pageGeometry(1)->size, QSizeF(200, 100));
    EXPECT_EQ(document->pageGeometry(1)->rotation, 270);
    EXPECT_EQ(document->pageGeometries(0, 500)->size(), 2);
    EXPECT_EQ(document->pageGeometries(1, 1)->size(), 1);
    EXPECT_TRUE(document->pageGeometries(2, 1)->isEmpty());
    EXPECT_TRUE(document->pageGeometries(0, 0)->isEmpty());
    EXPECT_TRUE(document->pageGeometries(-1, 1)->isEmpty());
    EXPECT_EQ(codeOf(document->pageGeometry(2).error()), PDFErrorCode::PageUnavailable);
    EXPECT_EQ(codeOf(document->pageGeometry(-1).error()), PDFErrorCode::PageUnavailable);
}

TEST(EngineReader, PlacesTextByItsUtf16Units)
{
    const auto document = opened(PdfBuilder().page({QStringLiteral("a\U0001f600b")}));
    const PDFPageText text = document->placedText(0).value();
    EXPECT_EQ(text.string(), QStringLiteral("a\U0001f600b\n"));
    EXPECT_EQ(text.bounds({1, 2}), text.bounds({2, 3})) << "both units of one character";
    EXPECT_GT(text.bounds({3, 4}).left(), text.bounds({1, 3}).left());
    EXPECT_TRUE(text.bounds({4, 5}).isNull());
    EXPECT_EQ(text.string().toUtf8(), document->pageText(0).value());
}

TEST(EngineReader, DrawsAPartOfAPage)
{
    const auto document = opened(PdfBuilder().page(kRedQuarter));
    const PDFPagePicture picture = document->draw(0, {.scale = 2, .clip = QRect(90, 190, 20, 30)}).value();
    ASSERT_EQ(picture.width(), 20);
    ASSERT_EQ(picture.height(), 30);
    ASSERT_EQ(picture.bytesPerLine(), 80);
    const auto pixelAt = [&](int x, int y) {
        const uchar *pixel = picture.pixels() + y * picture.bytesPerLine() + x * 4;
        return std::array<int, 4>{pixel[0], pixel[1], pixel[2], pixel[3]};
    };
    EXPECT_EQ(pixelAt(2, 25), (std::array{0, 0, 255, 255})) << "blue, green, red, opaque";
    EXPECT_EQ(pixelAt(15, 25), (std::array{255, 255, 255, 255}));
    EXPECT_EQ(pixelAt(2, 2), (std::array{255, 255, 255, 255}));
}

TEST(EngineReader, DrawsTurnedAndInTheDark)
{
    const auto document = opened(PdfBuilder().page(kRedQuarter));
    const auto firstPixel = [&](const PDFDrawing &drawing) {
        const PDFPagePicture picture = document->draw(0, drawing).value();
        return std::array<int, 3>{picture.pixels()[0], picture.pixels()[1], picture.pixels()[2]};
    };
    constexpr std::array kRed = {0, 0, 255};
    EXPECT_EQ(firstPixel({.clip = QRect(10, 10, 5, 5), .rotation = 90}), kRed);
    EXPECT_EQ(firstPixel({.clip = QRect(10, 10, 5, 5), .rotation = -270}), kRed);
    EXPECT_EQ(firstPixel({.clip = QRect(80, 80, 5, 5), .isDark = true}), (std::array{0, 0, 0}));
}

TEST(EngineReader, PicturesOutliveTheDocument)
{
    PDFPagePicture picture;
    {
        const auto document = opened(PdfBuilder().page(kRedQuarter));
        picture = document->draw(0, {.clip = QRect(0, 150, 10, 10)}).value();
    }
    EXPECT_EQ(picture.pixels()[2], 255);
    EXPECT_EQ(picture.pixels()[0], 0);
}

TEST(EngineReader, RefusesDrawingsBeyondEveryScreen)
{
    const auto document = opened(PdfBuilder().page(kRedQuarter));
    const auto isRefused = [&](const PDFDrawing &drawing) {
        const Result<PDFPagePicture> picture = document->draw(0, drawing);
        return !picture && codeOf(picture.error()) == PDFErrorCode::PageUnavailable;
    };
    EXPECT_TRUE(isRefused({.clip = QRect(0, 0, 1 << 20, 1 << 20)}));
    EXPECT_TRUE(isRefused({.clip = QRect(0, 0, 2147483647, 2147483647)}));
    EXPECT_TRUE(isRefused({.clip = QRect(0, 0, 0, 5)}));
    EXPECT_TRUE(isRefused({.clip = QRect()}));
    EXPECT_TRUE(isRefused({.clip = QRect(-5, 0, 10, 10)}));
    EXPECT_TRUE(isRefused({.scale = 0, .clip = QRect(0, 0, 5, 5)}));
    EXPECT_TRUE(isRefused({.scale = 1e-60, .clip = QRect(0, 0, 5, 5)}));
    EXPECT_TRUE(isRefused({.scale = -1, .clip = QRect(0, 0, 5, 5)}));
    EXPECT_TRUE(isRefused({.scale = 1e9, .clip = QRect(0, 0, 5, 5)}));
    EXPECT_TRUE(isRefused({.scale = std::numeric_limits<double>::quiet_NaN(), .clip = QRect(0, 0, 5, 5)}));
    EXPECT_TRUE(document->draw(0, {.clip = QRect(0, 0, 5, 5)})) << "and the engine is well";
}

TEST(EngineReader, PagesOutOfRangeAreUnavailable)
{
    const auto document = opened(PdfBuilder().page(kRedQuarter));
    for (qint64 index : {qint64(-1), qint64(1), qint64(1) << 40}) {
        EXPECT_EQ(codeOf(document->draw(index, {.clip = QRect(0, 0, 5, 5)}).error()),
                  PDFErrorCode::PageUnavailable);
        EXPECT_EQ(codeOf(document->placedText(index).error()), PDFErrorCode::PageUnavailable);
        EXPECT_EQ(codeOf(document->links(index).error()), PDFErrorCode::PageUnavailable);
    }
}

TEST(EngineReader, BuildsTheOutlineAsATree)
{
    const auto document =
        opened(PdfBuilder()
                   .page(kRedQuarter)
                   .catalogue("/Outlines<</First 100000 0 R>>")
                   .object(100'000, "<</Title(One)/Dest[0/XYZ 10 150 0]/First 100001 0 R/Next 100003 0 R>>")
                   .object(100'001, "<</Title(Below)/First 100002 0 R>>")
                   .object(100'002, "<<>>")
                   .object(100'003, "<</Title(Two)>>"));
    const PDFOutlineItem nothing;
    PDFOutlineItem below = {QStringLiteral("Below"), std::nullopt, {nothing}};
    const PDFOutlineItem one = {QStringLiteral("One"), PDFDestination{0, {10, 50}}, {below}};
    const PDFOutlineItem two = {QStringLiteral("Two"), std::nullopt, {}};
    EXPECT_EQ(document->outline().value(), (std::vector{one, two}));
    EXPECT_TRUE(opened(PdfBuilder().page(kRedQuarter))->outline()->empty());
}

TEST(EngineReader, FindsLinks)
{
    PdfPage page = kRedQuarter;
    page.entries = "/Annots[<</Subtype/Link/Rect[10 10 20 20]/Dest[0/FitH 150]>>"
                   "<</Subtype/Link/Rect[10 10 20 20]/A<</S/URI/URI(https://example.org/x)>>>>"
                   "<</Subtype/Link/Rect[10 10 20 20]/A<</S/URI/URI(https://[bad)>>>>]";
    const auto document = opened(PdfBuilder().page(page));
    const QRectF bounds(10, 180, 10, 10);
    const QList<PDFLink> expected = {{bounds, PDFDestination{0, {0, 50}}},
                                     {bounds, QUrl(QStringLiteral("https://example.org/x"))}};
    EXPECT_EQ(document->links(0).value(), expected);
}

TEST(EngineReader, KnowsPageLabels)
{
    const auto document = opened(
        PdfBuilder().page(kRedQuarter).catalogue("/PageLabels<</Nums[0<</S/r/St 3>> 2<</P(A-)/S/D>>]>>"));
    const PDFPageLabels labels = document->pageLabels().value();
    EXPECT_EQ(labels.label(0), QStringLiteral("iii"));
    EXPECT_EQ(labels.label(3), QStringLiteral("A-2"));
    EXPECT_TRUE(opened(PdfBuilder().page(kRedQuarter))->pageLabels()->isEmpty());
}

TEST(EngineReader, OpensWithAPassword)
{
    const Sample sample(PdfBuilder().page({QStringLiteral("Word")}).lock(PdfLock::NeedsPassword).build());
    const auto unlock = [&](const QString &password) {
        return EngineDocument::open(sample.file(), {.program = pdfEngineProgram(), .password = password});
    };
    const auto codeWith = [&](const QString &password) {
        return codeOf(unlock(password).error());
    };
    EXPECT_EQ(codeOf(sample.open().error()), PDFErrorCode::NeedsPassword);
    EXPECT_EQ(codeWith(QStringLiteral("simsim")), PDFErrorCode::WrongPassword);
    EXPECT_EQ(codeWith({}), PDFErrorCode::WrongPassword);
    EXPECT_EQ(codeWith(QLatin1String(PdfBuilder::kPassword) + QChar(u'\0')), PDFErrorCode::WrongPassword);
    EXPECT_EQ(codeWith(QString(5000, u'x')), PDFErrorCode::WrongPassword);
    EXPECT_FALSE(hasChildren());
    const OpenResult document = unlock(QLatin1String(PdfBuilder::kPassword));
    ASSERT_TRUE(document);
    EXPECT_EQ((*document)->pageText(0).value(), QByteArray("Word\n"));
}

TEST(EngineReader, ALatePageCostsThatPageAlone)
{
    const auto document = opened(endless(), {.pageText = 0ms, .thumbnail = 0ms, .draw = 0ms, .grace = 1h});
    const PDFDrawing drawing = {.clip = QRect(0, 0, 100, 100)};
    EXPECT_EQ(codeOf(document->draw(0, drawing).error()), PDFErrorCode::DeadlineExceeded);
    EXPECT_EQ(codeOf(document->draw(0, {.clip = drawing.clip, .isDark = true}).error()),
              PDFErrorCode::DeadlineExceeded);
    EXPECT_EQ(codeOf(document->pageText(0).error()), PDFErrorCode::DeadlineExceeded);
    EXPECT_EQ(codeOf(document->placedText(0).error()), PDFErrorCode::DeadlineExceeded);
    EXPECT_EQ(codeOf(document->thumbnail(0, 10, 10).error()), PDFErrorCode::DeadlineExceeded);
    EXPECT_TRUE(hasChildren());
    EXPECT_TRUE(document->pageGeometry(1)) << "without a restart";
}

TEST(EngineReader, AStopLeavesTheEngineWell)
{
    const auto document = opened(endless(), {.draw = 1h, .grace = 1h});
    std::stop_source source;
    std::thread stopper([&] { source.request_stop(); });
    const Result<PDFPagePicture> picture =
        document->draw(0, {.clip = QRect(0, 0, 100, 100)}, source.get_token());
    stopper.join();
    ASSERT_FALSE(picture);
    EXPECT_TRUE(isCancelled(picture.error()));
    EXPECT_EQ(document->pageText(1).value(), QByteArray("Second\n"));
}

TEST(EngineReader, AStoppedEngineThatAnswersInTimeStays)
{
    const TemporaryFolder folder;
    const QByteArray asked = QFile::encodeName(folder.path(QStringLiteral("asked")));
    const QByteArray stopped = QFile::encodeName(folder.path(QStringLiteral("stopped")));
    ASSERT_EQ(mkfifo(asked.constData(), 0600), 0);
    ASSERT_EQ(mkfifo(stopped.constData(), 0600), 0);
    const QByteArray answer = QFile::encodeName(
        folder.write(QStringLiteral("answer"), FakeEngine::reply(2, FailedReply{Failure::Stopped, {}}) +
                                                   FakeEngine::reply(3, TextReply{"words\n"})));
    const QByteArray bytes = QByteArray::number(
        qsizetype(encoded(1, Request(OpenRequest{})).size() + encoded(2, Request(PageTextRequest{})).size()));
    // Waits for both requests, says so, and answers when it hears of the stop.
    const FakeEngine engine({FakeEngine::opened()}, "head -c " + bytes + " <&3 >/dev/null\n: >'" + asked +
                                                        "'\n: <'" + stopped + "'\ncat '" + answer +
                                                        "' >&3\nexec sleep 1000");
    const OpenResult document = oneWord().open(engine.program(), {.pageText = 1h, .grace = 1h});
    ASSERT_TRUE(document);
    std::stop_source source;
    std::thread stopper([&] {
        close(open(asked.constData(), O_RDONLY | O_CLOEXEC));
        source.request_stop();
        close(open(stopped.constData(), O_WRONLY | O_CLOEXEC));
    });
    const Result<QByteArray> text = (*document)->pageText(0, source.get_token());
    stopper.join();
    EXPECT_TRUE(isCancelled(text.error()));
    EXPECT_TRUE(hasChildren());
    EXPECT_EQ((*document)->pageText(0).value(), QByteArray("words\n"));
}

TEST(EngineReader, DrawingsLeaveNoDescriptorBehind)
{
    const auto descriptors = [] {
        return QDir(QStringLiteral("/proc/self/fd")).entryList(QDir::Files | QDir::System).size();
    };
    const auto document = opened(PdfBuilder().page(kRedQuarter));
    const qsizetype before = descriptors();
    const PDFPagePicture kept = document->draw(0, {.clip = QRect(0, 0, 10, 10)}).value();
    for (int i = 0; i < 20; ++i)
        EXPECT_TRUE(document->draw(0, {.clip = QRect(0, 0, 10, 10)}));
    EXPECT_EQ(descriptors(), before);
}
