// The library window as a whole, with the real engine behind it.
#include "ui/Drag.h"
#include "ui/RealLibraryWindow.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QLineEdit>
#include <QMessageBox>
#include <QTest>
#include <QUrl>
#include <gtest/gtest.h>

class LibraryWindowTest : public testing::Test, public RealLibraryWindow
{
protected:
    void SetUp() override { testing::internal::CaptureStdout(); } // what a cancelled file has to say
    void TearDown() override { testing::internal::GetCapturedStdout(); }

    void dropOnWindow(const QString &path)
    {
        auto files = std::make_unique<QMimeData>();
        files->setUrls({QUrl::fromLocalFile(path)});
        Drag drag(window, std::move(files));
        drag.moveTo(&window);
        drag.drop();
    }
};

TEST_F(LibraryWindowTest, ImportsWhatWasTickedOfADroppedFolder)
{
    for (const QString &title :
         {QStringLiteral("Algebra"), QStringLiteral("Botany"), QStringLiteral("Chess")})
        addPdf(QStringLiteral("Papers/more"), title, {title});
    dropOnWindow(home.path(QStringLiteral("Papers")));
    waitUntil(vm.showImportPicker, true);
    ASSERT_EQ(vm.discoveredPDFs.value().size(), 3);
    part<QAbstractButton>("importSelected")->click();
    waitUntil(vm.lastImportResult, [](const auto &result) { return result.has_value(); });
    EXPECT_EQ(vm.lastImportResult.value()->indexed.size(), 3);
    EXPECT_TRUE(vm.lastImportResult.value()->errors.isEmpty());
    waitUntil(vm.papers, [](const QList<Paper> &papers) { return papers.size() == 3; });
    EXPECT_EQ(vm.papers.value().first().title, QStringLiteral("Algebra"));
    EXPECT_EQ(part<QAbstractItemView>("papers")->model()->rowCount(), 3);
}

TEST_F(LibraryWindowTest, KeepsWhatIsDoneWhenAnImportIsCancelledMidWay)
{
    constexpr int kFiles = 300;
    QStringList paths;
    for (int i = 0; i < kFiles; ++i) {
        const QString title = QStringLiteral("Paper %1").arg(i);
        paths.append(addPdf(QStringLiteral("Papers"), title, {title}));
    }
    vm.startImport(paths);
    ASSERT_TRUE(part<QWidget>("indexingOverlay"));
    waitUntil(vm.importingCount, [](int count) { return count >= 1; });
    part<QAbstractButton>("cancelImport")->click();
    waitUntil(vm.isImporting, false);
    waitUntil(vm.papers, [](const QList<Paper> &papers) { return !papers.isEmpty(); });
    EXPECT_LT(vm.papers.value().size(), kFiles);
    EXPECT_FALSE(part<QWidget>("indexingOverlay"));
}

TEST_F(LibraryWindowTest, FindsAPassageAndOpensTheReaderOnIt)
{
    importPapers({QStringLiteral("Knots"), QStringLiteral("Lattices")});
    auto *field = part<QLineEdit>("searchField");
    field->setFocus();
    QTest::keyClicks(field, QStringLiteral("about lattices"));
    waitUntil(vm.searchResults, [](const auto &results) { return results.size() == 1; });
    QTest::keyClick(field, Qt::Key_Return);
    auto *results = part<QAbstractItemView>("results");
    ASSERT_TRUE(results);
    results->setFocus();
    results->setCurrentIndex(results->model()->index(0, 0));
    QTest::keyClick(results, Qt::Key_Return);
    ASSERT_EQ(opened.size(), 1);
    EXPECT_EQ(opened[0].url.fileName(), QStringLiteral("Lattices.pdf"));
    EXPECT_EQ(opened[0].page, 1);
    EXPECT_TRUE(opened[0].searchText || opened[0].highlightText);
}

TEST_F(LibraryWindowTest, NarrowsTheCardsWhileAFilterIsTyped)
{
    importPapers({QStringLiteral("Knots"), QStringLiteral("Lattices")});
    QTest::keyClicks(part<QLineEdit>("searchField"), QStringLiteral("title:knot"));
    waitUntil(vm.filteredPapers, [](const QList<Paper> &papers) { return papers.size() == 1; });
    EXPECT_EQ(part<QAbstractItemView>("papers")->model()->rowCount(), 1);
}
