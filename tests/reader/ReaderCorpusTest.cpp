// Opens every PDF of a folder of real, damaged and hostile files that QUIREVAULT_CORPUS names in a reader
// window, and does nothing without.
#include "reader/ReaderWindowFixture.h"

#include <QDirIterator>
#include <QLabel>

namespace
{

class ReaderCorpus : public ReaderWindowTest
{
protected:
    Stage stage() { return window->opening().state.value().stage; }

    /// Waits until what is visible is drawn or cannot be, or the document is lost.
    void awaitPages()
    {
        PDFKitView &view = window->view();
        QEventLoop loop;
        QObject::connect(&view, &PDFKitView::becameSharp, &loop, &QEventLoop::quit);
        const auto observer = window->opening().state.addNotifier([&loop] { loop.quit(); });
        while (stage() == Stage::Open && !view.isSharp())
            loop.exec();
    }

    /// Reads the document from its start to its end, with a jump between.
    void read()
    {
        EXPECT_GT(reader().pageCount, 0);
        awaitPages();
        QTest::keyClick(&window->view(), Qt::Key_PageDown);
        rest();
        awaitPages();
        window->view().goToPage(reader().pageCount - 1);
        awaitPages();
    }

    /// What a message of the window says is wrong.
    QString problemOn(const char *page) const
    {
        return find<QWidget>(page)->findChild<QLabel *>(QStringLiteral("problem"))->text();
    }

    void expectPagesOrMessage()
    {
        if (stage() == Stage::Open)
            read();
        if (stage() == Stage::Failed) {
            EXPECT_TRUE(isShown("failurePage"));
            EXPECT_FALSE(problemOn("failurePage").isEmpty());
        } else if (stage() == Stage::Locked) {
            EXPECT_TRUE(isShown("passwordPage"));
        } else {
            EXPECT_EQ(stage(), Stage::Open);
            EXPECT_TRUE(isShown("pdfView"));
        }
    }
};

} // namespace

TEST_F(ReaderCorpus, EveryFileEndsInPagesOrAMessage)
{
    const QString corpus = qEnvironmentVariable("QUIREVAULT_CORPUS");
    if (corpus.isEmpty())
        GTEST_SKIP() << "QUIREVAULT_CORPUS names no folder of PDFs";
    int files = 0;
    QDirIterator all(corpus, {QStringLiteral("*.pdf")}, QDir::Files, QDirIterator::Subdirectories);
    while (all.hasNext()) {
        const QString path = all.next();
        SCOPED_TRACE(path.toStdString());
        ++files;
        openAndArrive(requestFor(path));
        expectPagesOrMessage();
    }
    EXPECT_GT(files, 0);
}
