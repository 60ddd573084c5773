#include "reader/ReaderWindowFixture.h"

#include "pdf/protocol/FileDescriptor.h"
#include "platform/InputFile.h"
#include "platform/Sha256.h"
#include "reader/ReaderDocument.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTextEdit>
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

class PDFViewerWindowTrouble : public ReaderWindowTest
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
    QString pathOn(const char *pageName) const
    {
        return find<QWidget>(pageName)->findChild<QTextEdit *>(QStringLiteral("path"))->toPlainText();
    }
    void press(const char *name) { QTest::mouseClick(find<QPushButton>(name), Qt::LeftButton); }

    static QString hashOf(const QString &path)
    {
        return sha256HexOfFile(InputFile::open(path)->descriptor()).value();
    }
};

} // namespace

TEST_F(PDFViewerWindowTrouble, AsksForThePasswordUntilItIsRight)
{
    const QString path = library.folder.write(
        QStringLiteral("locked.pdf"),
        PdfBuilder().page({QStringLiteral("secret")}).lock(PdfLock::NeedsPassword).build());
    open(requestFor(path));
    EXPECT_TRUE(isShown("passwordPage"));
    auto *password = find<QLineEdit>("password");
    EXPECT_EQ(password->echoMode(), QLineEdit::Password);
    EXPECT_TRUE(password->hasFocus());
    EXPECT_TRUE(label("passwordPage", "problem").isEmpty());

    QTest::keyClicks(password, QStringLiteral("wrong"));
    QTest::keyClick(password, Qt::Key_Return);
    awaitThat(window->opening().state, [this] { return !window->opening().state.value().problem.isEmpty(); });
    EXPECT_EQ(label("passwordPage", "problem"), u"This password does not open the document.");
    EXPECT_TRUE(password->text().isEmpty());

    QTest::keyClicks(password, QLatin1String(PdfBuilder::kPassword));
    press("unlock");
    awaitStage(Stage::Open);
    EXPECT_FALSE(isShown("passwordPage"));
    EXPECT_EQ(reader().pageCount, 1);
}

TEST_F(PDFViewerWindowTrouble, ClosesWhenThePasswordIsNotGiven)
{
    const QString path = library.folder.write(
        QStringLiteral("locked.pdf"),
        PdfBuilder().page({QStringLiteral("secret")}).lock(PdfLock::NeedsPassword).build());
    open(requestFor(path));
    QSignalSpy closed(window, &PDFViewerWindow::closed);
    press("cancelPassword");
    EXPECT_EQ(closed.size(), 1);
}

TEST_F(PDFViewerWindowTrouble, OffersToTryAgainWhenTheEngineIsLost)
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

TEST_F(PDFViewerWindowTrouble, ReadsOnWhereItWasWhenItTriesAgain)
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

TEST_F(PDFViewerWindowTrouble, EndsTheEngineWhenItCloses)
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

TEST_F(PDFViewerWindowTrouble, SaysWhatIsWrongWithAFileThatIsNoPDF)
{
    const QString path = library.folder.write(QStringLiteral("no.pdf"), "not a PDF at all");
    open(requestFor(path));
    EXPECT_TRUE(isShown("failurePage"));
    EXPECT_TRUE(label("failurePage", "problem").startsWith(u"The file is not a PDF"));
    EXPECT_EQ(pathOn("failurePage"), path);
}

TEST_F(PDFViewerWindowTrouble, SaysThatTheFileHasVanished)
{
    const QString path = library.folder.path(QStringLiteral("gone.pdf"));
    open(requestFor(path));
    EXPECT_TRUE(isShown("missingPage"));
    EXPECT_EQ(pathOn("missingPage"), path);
    EXPECT_EQ(find<QPushButton>("locateFile")->text(), u"Locate File…");
}

TEST_F(PDFViewerWindowTrouble, OpensTheFileThatComesBack)
{
    const QString path = library.folder.path(QStringLiteral("back.pdf"));
    open(requestFor(path));
    EXPECT_EQ(page("back.pdf", "text"), path);
    press("lookAgain");
    awaitStage(Stage::Open);
    EXPECT_EQ(reader().pageCount, 2);
}

TEST_F(PDFViewerWindowTrouble, TakesALocatedFileOfTheSameContentAndTellsTheLibrary)
{
    const QString moved = page("moved.pdf", "text");
    const QString gone = library.folder.path(QStringLiteral("gone.pdf"));
    addPaper(QStringLiteral("p"), gone, hashOf(moved));
    PDFOpenRequest request = requestFor(gone);
    request.paperId = QStringLiteral("p");
    open(request);
    ASSERT_TRUE(isShown("missingPage"));
    press("locateFile");
    auto *dialog = find<QFileDialog>("locateDialog");
    Q_EMIT dialog->fileSelected(moved);
    dialog->reject();
    awaitStage(Stage::Open);
    EXPECT_EQ(library.service.paperById(QStringLiteral("p")).result()->value().filepath, moved);
    EXPECT_EQ(window->request().url, QUrl::fromLocalFile(moved));
    EXPECT_EQ(reader().pageCount, 2);
}

TEST_F(PDFViewerWindowTrouble, TakesALocatedFileThoughAnotherPaperHasTheSameContent)
{
    const QString moved = page("moved.pdf", "text");
    const QString gone = library.folder.path(QStringLiteral("gone.pdf"));
    addPaper(QStringLiteral("another"), library.folder.path(QStringLiteral("another.pdf")), hashOf(moved));
    addPaper(QStringLiteral("p"), gone, hashOf(moved));
    PDFOpenRequest request = requestFor(gone);
    request.paperId = QStringLiteral("p");
    open(request);
    window->opening().locate(moved);
    awaitStage(Stage::Open);
    EXPECT_EQ(library.service.paperById(QStringLiteral("p")).result()->value().filepath, moved);
}

TEST_F(PDFViewerWindowTrouble, TakesTheWordOfAPersonForAPaperWhoseContentIsUnknown)
{
    const QString moved = page("moved.pdf", "text");
    const QString gone = library.folder.path(QStringLiteral("gone.pdf"));
    library.run(QStringLiteral("INSERT INTO papers (id, title, filepath) VALUES ('p', 'Old', ?)"), {gone});
    PDFOpenRequest request = requestFor(gone);
    request.paperId = QStringLiteral("p");
    open(request);
    window->opening().locate(moved);
    awaitStage(Stage::Open);
    EXPECT_EQ(library.service.paperById(QStringLiteral("p")).result()->value().filepath, moved);
}

TEST_F(PDFViewerWindowTrouble, FindsThePaperOfALocatedFile)
{
    const QString paper = page("paper.pdf", "text");
    addPaper(QStringLiteral("p"), paper);
    open(requestFor(library.folder.path(QStringLiteral("gone.pdf"))));
    EXPECT_FALSE(reader().isInLibrary);
    window->opening().locate(paper);
    awaitValue(reader().isInLibrary, true);
    EXPECT_EQ(window->request().paperId, QStringLiteral("p"));
    EXPECT_EQ(window->windowTitle(), u"Title of p");
}

TEST_F(PDFViewerWindowTrouble, RefusesALocatedFileOfAnotherContent)
{
    const QString other = page("other.pdf", "something else");
    const QString gone = library.folder.path(QStringLiteral("gone.pdf"));
    addPaper(QStringLiteral("p"), gone, QStringLiteral("beef"));
    PDFOpenRequest request = requestFor(gone);
    request.paperId = QStringLiteral("p");
    open(request);
    window->opening().locate(other);
    awaitThat(window->opening().state, [this] { return !window->opening().state.value().problem.isEmpty(); });
    EXPECT_TRUE(isShown("missingPage"));
    EXPECT_EQ(label("missingPage", "problem"),
              u"This is another document than the one that is missing: " + other);
    EXPECT_EQ(library.service.paperById(QStringLiteral("p")).result()->value().filepath, gone);
}

TEST_F(PDFViewerWindowTrouble, SaysWhyALocatedFileCannotBeRead)
{
    const QString gone = library.folder.path(QStringLiteral("gone.pdf"));
    addPaper(QStringLiteral("p"), gone, QStringLiteral("beef"));
    PDFOpenRequest request = requestFor(gone);
    request.paperId = QStringLiteral("p");
    open(request);
    window->opening().locate(library.folder.path());
    awaitThat(window->opening().state, [this] { return !window->opening().state.value().problem.isEmpty(); });
    EXPECT_TRUE(label("missingPage", "problem").contains(library.folder.path()));
}

TEST_F(PDFViewerWindowTrouble, FindsAPaperWhoseFileMovedWithTheLibrarysKnowledge)
{
    const QString moved = page("moved.pdf", "text");
    addPaper(QStringLiteral("p"), moved);
    PDFOpenRequest request = requestFor(library.folder.path(QStringLiteral("gone.pdf")));
    request.paperId = QStringLiteral("p");
    open(request);
    EXPECT_EQ(window->opening().state.value().stage, Stage::Open);
    EXPECT_EQ(window->request().url, QUrl::fromLocalFile(moved));
    EXPECT_EQ(reader().pageCount, 2);
}

TEST_F(PDFViewerWindowTrouble, OpensALocatedFileThatWasNeverInTheLibrary)
{
    open(requestFor(library.folder.path(QStringLiteral("gone.pdf"))));
    window->opening().locate(page("elsewhere.pdf", "text"));
    awaitStage(Stage::Open);
    EXPECT_EQ(reader().pageCount, 2);
    EXPECT_EQ(window->windowTitle(), u"elsewhere.pdf");
}
