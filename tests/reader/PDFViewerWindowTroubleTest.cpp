#include "reader/ReaderWindowFixture.h"

#include "platform/InputFile.h"
#include "platform/Sha256.h"
#include "support/BusyThreads.h"

#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTextEdit>

namespace
{

class PDFViewerWindowTrouble : public ReaderWindowTest
{
protected:
    QString page(const char *name, const char *text) const
    {
        return writePdf(QLatin1String(name), {{QLatin1String(text)}, {QStringLiteral("second")}});
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
    /// Opens paper "p", whose content the library knows and whose file is not there.
    void openVanishedPaper(const QString &contentHash)
    {
        const QString gone = library.folder.path(QStringLiteral("gone.pdf"));
        addPaper(QStringLiteral("p"), gone, contentHash);
        PDFOpenRequest request = requestFor(gone);
        request.paperId = QStringLiteral("p");
        open(request);
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
    openVanishedPaper(hashOf(moved));
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

TEST_F(PDFViewerWindowTrouble, LooksAtALocatedFileWithoutTheThreadsThatQtPaintsWith)
{
    const QString moved = page("moved.pdf", "text");
    openVanishedPaper(hashOf(moved));
    const BusyThreads busy;
    window->opening().locate(moved);
    awaitStage(Stage::Open);
    EXPECT_EQ(window->request().url, QUrl::fromLocalFile(moved));
}

TEST_F(PDFViewerWindowTrouble, TakesALocatedFileThoughAnotherPaperHasTheSameContent)
{
    const QString moved = page("moved.pdf", "text");
    addPaper(QStringLiteral("another"), library.folder.path(QStringLiteral("another.pdf")), hashOf(moved));
    openVanishedPaper(hashOf(moved));
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
