// Reader windows whose engine crashes, hangs or is no longer needed.
#include "reader/ReaderWindowFixture.h"

#include "pdf/EngineDocument.h"
#include "pdf/protocol/FileDescriptor.h"
#include "platform/InputFile.h"
#include "reader/ReaderDocument.h"

#include <QDir>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <csignal>
#include <poll.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace
{

/// Processes that this one has started and that are still there.
QList<pid_t> children()
{
    QList<pid_t> found;
    const QDir threads(QStringLiteral("/proc/self/task"));
    for (const QString &thread : threads.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile list(threads.filePath(thread + u"/children"));
        if (!list.open(QIODevice::ReadOnly))
            continue;
        for (const QByteArray &pid : list.readAll().split(' ')) {
            if (pid.toInt() > 0)
                found.append(pid.toInt());
        }
    }
    return found;
}

class PDFViewerWindowEngine : public ReaderWindowTest
{
protected:
    QString page(const char *name, const char *text) const
    {
        return writePdf(QLatin1String(name), {{QLatin1String(text)}, {QStringLiteral("second")}});
    }

    /// Opens a window and answers the process of its engine. Those of windows before it may still be ending.
    pid_t engineOf(const PDFOpenRequest &request)
    {
        const QList<pid_t> before = children();
        openAndArrive(request);
        QList<pid_t> started = children();
        started.removeIf([&before](pid_t child) { return before.contains(child); });
        EXPECT_EQ(started.size(), 1);
        return started.value(0, -1);
    }

    QString label(const char *pageName, const char *name) const
    {
        return find<QWidget>(pageName)->findChild<QLabel *>(QLatin1String(name))->text();
    }
    void press(const char *name) { QTest::mouseClick(find<QPushButton>(name), Qt::LeftButton); }
};

} // namespace

TEST_F(PDFViewerWindowEngine, OffersToTryAgainWhenTheEngineIsLost)
{
    PDFOpenRequest request = requestFor(page("crash.pdf", "some text"));
    request.page = 2;
    const pid_t engine = engineOf(request);
    ASSERT_GT(engine, 0);
    EXPECT_EQ(reader().currentPage, 2);
    ASSERT_EQ(kill(engine, SIGKILL), 0);
    reader().highlight(QStringLiteral("some"), 1); // the next question finds nobody
    awaitStage(Stage::Failed);
    EXPECT_TRUE(isShown("failurePage"));
    EXPECT_EQ(label("failurePage", "heading"), u"This document cannot be shown");
    EXPECT_TRUE(label("failurePage", "problem").startsWith(u"The PDF engine failed on this document"));
    EXPECT_EQ(find<QPushButton>("tryAgain")->text(), u"Try Again");

    press("tryAgain");
    awaitStage(Stage::Open);
    EXPECT_FALSE(isShown("failurePage"));
    reader().highlight(QStringLiteral("some"), 1);
    awaitValue(reader().hasSelection, true);
    EXPECT_EQ(window->view().currentSelection()->string(), u"some");
}

TEST_F(PDFViewerWindowEngine, ReadsOnWhereItWasWhenItTriesAgain)
{
    PDFOpenRequest request = requestFor(page("crash.pdf", "some text"));
    request.page = 2;
    const pid_t engine = engineOf(request);
    ASSERT_GT(engine, 0);
    ASSERT_EQ(kill(engine, SIGKILL), 0);
    reader().highlight(QStringLiteral("second"), 2);
    awaitStage(Stage::Failed);
    press("tryAgain");
    awaitStage(Stage::Open);
    rest();
    EXPECT_EQ(reader().currentPage, 2);
}

TEST_F(PDFViewerWindowEngine, EndsTheEngineWhenItCloses)
{
    const pid_t process = engineOf(requestFor(page("one.pdf", "text")));
    ASSERT_GT(process, 0);
    const FileDescriptor engine(int(syscall(SYS_pidfd_open, process, 0)));
    ASSERT_TRUE(engine);
    pollfd ending{.fd = engine.get(), .events = POLLIN, .revents = 0};
    EXPECT_EQ(poll(&ending, 1, 0), 0);
    delete window;
    EXPECT_EQ(poll(&ending, 1, -1), 1);
}

TEST_F(PDFViewerWindowEngine, SaysThatTheDocumentTakesTooLongWhenItHangs)
{
    services.makeDocument = [](const QString &path) {
        return std::make_unique<ReaderDocument>([path](auto, std::stop_token stop) {
            EngineOptions options;
            options.deadlines.pageText = std::chrono::seconds(2);
            return EngineDocument::open(*InputFile::open(path), options, stop);
        });
    };
    const pid_t engine = engineOf(requestFor(page("slow.pdf", "some text")));
    ASSERT_GT(engine, 0);
    ASSERT_EQ(kill(engine, SIGSTOP), 0); // it is there, and does nothing any more
    reader().highlight(QStringLiteral("some"), 1);
    awaitStage(Stage::Failed);
    EXPECT_TRUE(label("failurePage", "problem").startsWith(u"The PDF takes too long to read"));
    press("tryAgain");
    awaitStage(Stage::Open);
}

TEST_F(PDFViewerWindowEngine, LeavesOtherWindowsAloneWhenItIsLost)
{
    const std::unique_ptr<PDFViewerWindow> other(
        openPDFViewerWindow(requestFor(page("other.pdf", "other text")), services));
    awaitThat(other->opening().state, [&] { return other->opening().state.value().stage == Stage::Open; });
    const pid_t engine = engineOf(requestFor(page("crash.pdf", "some text")));
    ASSERT_GT(engine, 0);
    ASSERT_EQ(kill(engine, SIGKILL), 0);
    reader().highlight(QStringLiteral("some"), 1);
    awaitStage(Stage::Failed);
    EXPECT_EQ(other->opening().state.value().stage, Stage::Open);
    EXPECT_TRUE(QCoro::waitFor(other->controller().highlight(QStringLiteral("other"), 1)));
    EXPECT_EQ(other->view().currentSelection()->string(), u"other");
}
