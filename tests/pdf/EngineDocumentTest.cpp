#include "EngineSample.h"
#include "FakeEngine.h"
#include "support/Programs.h"

#include <QDir>
#include <fcntl.h>
#include <sys/stat.h>
#include <thread>

namespace
{
using namespace std::chrono_literals;

qsizetype openDescriptors()
{
    return QDir(QStringLiteral("/proc/self/fd")).entryList(QDir::Files | QDir::System).size();
}
} // namespace

TEST(EngineDocument, ReadsARealDocument)
{
    const OpenResult document = oneWord().open();
    ASSERT_TRUE(document);
    EXPECT_EQ((*document)->attributes(), (PDFAttributes{QStringLiteral("A title"), std::nullopt}));
    EXPECT_EQ((*document)->pageCount(), 1);
    EXPECT_EQ((*document)->pageText(0).value(), QByteArray("Word\n"));
    const PDFBitmap picture = (*document)->thumbnail(0, 300, 400).value();
    EXPECT_EQ(picture.width, 300);
    EXPECT_EQ(picture.height, 388);
    EXPECT_EQ(picture.pixels.size(), 300 * 388 * 3);
}

TEST(EngineDocument, SaysWhyADocumentCannotBeOpened)
{
    EXPECT_EQ(codeOf(Sample("").open().error()), PDFErrorCode::NotAPDF);
    EXPECT_EQ(codeOf(Sample("no PDF at all").open().error()), PDFErrorCode::NotAPDF);
    EXPECT_EQ(codeOf(Sample("%PDF-1.4 and then nothing").open().error()), PDFErrorCode::Damaged);
    const Sample locked(PdfBuilder().page({QStringLiteral("Word")}).lock(PdfLock::NeedsPassword).build());
    EXPECT_EQ(codeOf(locked.open().error()), PDFErrorCode::NeedsPassword);
}

TEST(EngineDocument, APageFailsAloneAndTheEngineLives)
{
    const Sample sample(
        PdfBuilder().page(PdfPage{.isBroken = true}).page({QStringLiteral("Second")}).build());
    const OpenResult document = sample.open();
    ASSERT_TRUE(document);
    EXPECT_EQ(codeOf((*document)->pageText(0).error()), PDFErrorCode::PageUnavailable);
    EXPECT_EQ((*document)->pageText(1).value(), QByteArray("Second\n"));
}

TEST(EngineDocument, PagesOutOfRangeAreUnavailable)
{
    const OpenResult document = oneWord().open();
    ASSERT_TRUE(document);
    for (qint64 index : {qint64(-1), qint64(1), qint64(1) << 31, qint64(1) << 40}) {
        EXPECT_EQ(codeOf((*document)->pageText(index).error()), PDFErrorCode::PageUnavailable);
        EXPECT_EQ(codeOf((*document)->thumbnail(index, 10, 10).error()), PDFErrorCode::PageUnavailable);
    }
}

TEST(EngineDocument, LeavesNoProcessAndNoDescriptorBehind)
{
    const Sample sample = oneWord();
    const Sample broken("nothing");
    const qsizetype before = openDescriptors();
    for (int i = 0; i < 3; ++i) {
        const OpenResult document = sample.open();
        ASSERT_TRUE(document);
        EXPECT_TRUE((*document)->pageText(0));
        EXPECT_TRUE(hasChildren());
        EXPECT_FALSE(broken.open());
    }
    EXPECT_FALSE(hasChildren());
    EXPECT_EQ(openDescriptors(), before);
}

TEST(EngineDocument, AMissingEngineIsAnErrorThatNamesIt)
{
    const OpenResult result = oneWord().open(QStringLiteral("/nowhere/engine"));
    EXPECT_EQ(codeOf(result.error()), PDFErrorCode::EngineMissing);
    EXPECT_TRUE(result.error().reason.contains(u"/nowhere/engine"));
}

TEST(EngineDocument, AnEngineThatCrashesIsAnErrorThatSaysHow)
{
    const FakeEngine engine({}, "kill -SEGV $$");
    const OpenResult result = oneWord().open(engine.program());
    EXPECT_EQ(codeOf(result.error()), PDFErrorCode::EngineFailed);
    EXPECT_TRUE(result.error().reason.contains(u"signal 11"));
    EXPECT_FALSE(hasChildren());
}

TEST(EngineDocument, AnEngineThatEndsIsAnError)
{
    const FakeEngine engine({}, "exit 3");
    const OpenResult result = oneWord().open(engine.program());
    EXPECT_EQ(codeOf(result.error()), PDFErrorCode::EngineFailed);
    EXPECT_TRUE(result.error().reason.contains(u"status 3"));
}

TEST(EngineDocument, AnEngineThatHangsIsEndedAtTheDeadline)
{
    const FakeEngine engine({});
    const OpenResult result = oneWord().open(engine.program(), {.open = 1ms, .grace = 1ms});
    EXPECT_EQ(codeOf(result.error()), PDFErrorCode::DeadlineExceeded);
    EXPECT_FALSE(hasChildren());
}

TEST(EngineDocument, HalfAReplyHangsToo)
{
    const FakeEngine engine({FakeEngine::opened(), FakeEngine::reply(2, TextReply{"words"}).chopped(1)});
    const OpenResult document = oneWord().open(engine.program(), {.pageText = 1ms, .grace = 1ms});
    ASSERT_TRUE(document);
    EXPECT_EQ(codeOf((*document)->pageText(0).error()), PDFErrorCode::DeadlineExceeded);
}

TEST(EngineDocument, ALostEngineStaysLostUntilRestarted)
{
    const Sample sample = oneWord();
    const FakeEngine engine({FakeEngine::opened(7), numbers({0, 0x777, 2})});
    const OpenResult document = sample.open(engine.program());
    ASSERT_TRUE(document);
    EXPECT_EQ(codeOf((*document)->pageText(0).error()), PDFErrorCode::EngineFailed);
    EXPECT_FALSE(hasChildren());
    EXPECT_EQ(codeOf((*document)->pageText(0).error()), PDFErrorCode::EngineFailed);
    EXPECT_TRUE((*document)->restart());
    EXPECT_TRUE(hasChildren());
    EXPECT_EQ((*document)->pageCount(), 7);
}

TEST(EngineDocument, ReadsOnAfterARestart)
{
    const TemporaryFolder folder;
    const QByteArray opened = QFile::encodeName(folder.write(QStringLiteral("opened"), FakeEngine::opened()));
    const QByteArray hung = QFile::encodeName(folder.path(QStringLiteral("hung")));
    // Hangs at its first start: the real engine might draw the page before anybody looks at the deadline.
    const FakeEngine engine({}, "if mkdir '" + hung + "'; then cat '" + opened +
                                    "' >&3; exec sleep 1000; fi\nexec '" +
                                    QFile::encodeName(pdfEngineProgram()) + "'");
    const OpenResult document = oneWord().open(engine.program(), {.thumbnail = 0ms, .grace = 0ms});
    ASSERT_TRUE(document);
    EXPECT_EQ(codeOf((*document)->thumbnail(0, 300, 400).error()), PDFErrorCode::DeadlineExceeded);
    EXPECT_EQ(codeOf((*document)->pageText(0).error()), PDFErrorCode::EngineFailed);
    ASSERT_TRUE((*document)->restart());
    EXPECT_EQ((*document)->pageText(0).value(), QByteArray("Word\n"));
}

TEST(EngineDocument, RestartLeavesAnEngineAloneThatIsWell)
{
    const FakeEngine engine({FakeEngine::opened(), FakeEngine::reply(2, TextReply{"words\n"})});
    const OpenResult document = oneWord().open(engine.program());
    ASSERT_TRUE(document);
    EXPECT_TRUE((*document)->restart());
    EXPECT_EQ((*document)->pageText(0).value(), QByteArray("words\n"));
}

TEST(EngineDocument, AStopThatFiresMeanwhileEndsTheEngine)
{
    const TemporaryFolder folder;
    const QByteArray pipe = QFile::encodeName(folder.path(QStringLiteral("pipe")));
    ASSERT_EQ(mkfifo(pipe.constData(), 0600), 0);
    const QByteArray requests = QByteArray::number(
        qsizetype(encoded(1, Request(OpenRequest{})).size() + encoded(2, Request(PageTextRequest{})).size()));
    const FakeEngine engine({FakeEngine::opened()},
                            "head -c " + requests + " <&3 >/dev/null\n: >'" + pipe + "'\nexec sleep 1000");
    const OpenResult document = oneWord().open(engine.program(), {.open = 1h, .pageText = 1h, .grace = 1ms});
    ASSERT_TRUE(document);
    std::stop_source source;
    std::thread stopper([&] {
        close(open(pipe.constData(), O_RDONLY | O_CLOEXEC)); // waits until the engine has both requests
        source.request_stop();
    });
    const Result<QByteArray> text = (*document)->pageText(0, source.get_token());
    stopper.join();
    ASSERT_FALSE(text);
    EXPECT_TRUE(isCancelled(text.error()));
    EXPECT_FALSE(hasChildren());
}

TEST(EngineDocument, AStopThatFiredBeforeStartsNothing)
{
    std::stop_source source;
    source.request_stop();
    const OpenResult result = oneWord().open(QStringLiteral("/nowhere/engine"), {}, source.get_token());
    ASSERT_FALSE(result);
    EXPECT_TRUE(isCancelled(result.error()));
}

TEST(EngineDocument, AStopThatFiredBeforeLeavesTheEngineAlone)
{
    const OpenResult document = oneWord().open();
    ASSERT_TRUE(document);
    std::stop_source source;
    source.request_stop();
    EXPECT_TRUE(isCancelled((*document)->pageText(0, source.get_token()).error()));
    EXPECT_EQ((*document)->pageText(0).value(), QByteArray("Word\n"));
}

TEST(EngineDocument, ManyDocumentsAreReadAtOnce)
{
    const Sample sample = oneWord();
    std::array<QByteArray, 6> texts;
    {
        std::vector<std::jthread> threads;
        for (QByteArray &text : texts)
            threads.emplace_back([&] { text = sample.open().value()->pageText(0).value(); });
    }
    for (const QByteArray &text : texts)
        EXPECT_EQ(text, QByteArray("Word\n"));
    EXPECT_FALSE(hasChildren());
}
