#include "ui/ProgressOverlay.h"

#include "ui/SearchField.h"
#include "ui/WindowFixture.h"

#include <QLabel>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QToolBar>
#include <gtest/gtest.h>

namespace
{
class ProgressOverlayTest : public ::testing::Test, public WindowFixture
{
protected:
    ProgressOverlayTest() { openWindow(); }

    QWidget *indexing() { return find<QWidget>("indexingOverlay"); }
    QWidget *retagging() { return find<QWidget>("retaggingOverlay"); }
    QString text(QWidget *overlay, const char *label) { return find<QLabel>(overlay, label)->text(); }
    void startImporting()
    {
        vm().importingTotal = 20;
        vm().isImporting = true;
    }
};
} // namespace

TEST_F(ProgressOverlayTest, ShowsHowFarAnImportHasCome)
{
    EXPECT_EQ(indexing(), nullptr);
    startImporting();
    vm().importingCount = 5;
    vm().importProgress = 0.25;
    vm().importStatus = QStringLiteral("Indexed: light.pdf");
    vm().importTimeEstimate = QStringLiteral("~2m 5s remaining");
    ASSERT_NE(indexing(), nullptr);
    EXPECT_EQ(text(indexing(), "overlayTitle"), QStringLiteral("Indexing Library..."));
    EXPECT_EQ(text(indexing(), "progressCount"), QStringLiteral("5 of 20"));
    EXPECT_EQ(text(indexing(), "importStatus"), QStringLiteral("Indexed: light.pdf"));
    EXPECT_EQ(text(indexing(), "importEstimate"), QStringLiteral("~2m 5s remaining"));
    const auto *bar = find<QProgressBar>(indexing(), "overlayProgress");
    EXPECT_EQ(bar->value() * 4, bar->maximum());
    vm().isImporting = false;
    EXPECT_EQ(indexing(), nullptr);
}

TEST_F(ProgressOverlayTest, ShortensALongFileNameAndKeepsItWhole)
{
    startImporting();
    const QString status = u"Indexed: " + QString(300, u'x') + u".pdf";
    vm().importStatus = status;
    const auto *label = find<QLabel>(indexing(), "importStatus");
    EXPECT_LT(label->text().size(), status.size());
    EXPECT_TRUE(label->text().endsWith(u".pdf"));
    EXPECT_EQ(label->accessibleName(), status);
}

TEST_F(ProgressOverlayTest, CancelsAnImportOnce)
{
    startImporting();
    auto *cancel = find<QPushButton>(indexing(), "cancelImport");
    EXPECT_EQ(cancel->text(), QStringLiteral("Cancel"));
    EXPECT_EQ(QApplication::focusWidget(), cancel);
    QTest::keyClick(cancel, Qt::Key_Space);
    EXPECT_TRUE(vm().isCancellingImport);
    EXPECT_EQ(cancel->text(), QStringLiteral("Cancelling…"));
    EXPECT_FALSE(cancel->isEnabled());
    EXPECT_EQ(QApplication::focusWidget(), indexing());
}

TEST_F(ProgressOverlayTest, KeepsWhatLiesBelowFromBeingUsed)
{
    vm().requestSearchFocus();
    auto *field = find<SearchField>("searchField");
    ASSERT_TRUE(field->hasFocus());
    startImporting();
    EXPECT_FALSE(field->isEnabled());
    EXPECT_FALSE(find<QToolBar>("libraryToolBar")->isEnabled());
    vm().requestSearchFocus();
    EXPECT_FALSE(field->hasFocus());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_TRUE(indexing()->isAncestorOf(QApplication::focusWidget()) ||
                QApplication::focusWidget() == indexing());

    vm().isImporting = false;
    EXPECT_TRUE(field->isEnabled());
    EXPECT_TRUE(find<QToolBar>("libraryToolBar")->isEnabled());
    EXPECT_TRUE(field->hasFocus()) << "the focus returns to where it was";
}

TEST_F(ProgressOverlayTest, CoversTheWholeLibraryAtAnySize)
{
    startImporting();
    const auto *panes = find<QWidget>("panes");
    EXPECT_EQ(indexing()->geometry(), panes->geometry());
    window->resize(900, 600);
    QCoreApplication::processEvents();
    EXPECT_EQ(indexing()->geometry(), panes->geometry());
}

TEST_F(ProgressOverlayTest, ShowsHowFarARetagHasCome)
{
    vm().retagTotal = 140;
    vm().isRetagging = true;
    vm().retagCount = 70;
    vm().retagProgress = 0.5;
    ASSERT_NE(retagging(), nullptr);
    EXPECT_EQ(text(retagging(), "overlayTitle"), QStringLiteral("Retagging Library..."));
    EXPECT_EQ(text(retagging(), "progressCount"), QStringLiteral("70 of 140"));
    const auto *bar = find<QProgressBar>(retagging(), "overlayProgress");
    EXPECT_EQ(bar->value() * 2, bar->maximum());
    EXPECT_TRUE(retagging()->findChildren<QAbstractButton *>().isEmpty());
    vm().isRetagging = false;
    EXPECT_EQ(retagging(), nullptr);
}

TEST_F(ProgressOverlayTest, StaysInForceUntilTheLastOfTwoIsGone)
{
    startImporting();
    vm().isRetagging = true;
    vm().isRetagging = false;
    EXPECT_FALSE(find<SearchField>("searchField")->isEnabled());
    vm().isImporting = false;
    EXPECT_TRUE(find<SearchField>("searchField")->isEnabled());
}

TEST_F(ProgressOverlayTest, AsksBeforeTheWindowClosesOverAnImport)
{
    QSignalSpy closed(window.get(), &ContentView::closed);
    startImporting();
    EXPECT_FALSE(window->close());
    auto *box = find<QMessageBox>("stopImportAlert");
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->text(), QStringLiteral("Stop the Import?"));
    EXPECT_EQ(box->informativeText(),
              QStringLiteral("An import is running. The files indexed so far stay in the "
                             "library; the others are not added."));
    QTest::keyClick(box, Qt::Key_Return); // "Keep Importing"
    EXPECT_FALSE(vm().isCancellingImport);
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(closed.isEmpty());
}

TEST_F(ProgressOverlayTest, StopsTheImportAndClosesWhenThePersonAgrees)
{
    QSignalSpy closed(window.get(), &ContentView::closed);
    startImporting();
    window->close();
    buttonOf(find<QMessageBox>("stopImportAlert"), QStringLiteral("Stop and Close"))->click();
    EXPECT_TRUE(vm().isCancellingImport);
    ASSERT_TRUE(closed.size() == 1 || closed.wait());
    EXPECT_FALSE(window->isVisible());
}

TEST_F(ProgressOverlayTest, StopsTheImportAndEndsTheProgramWhereThatWasAskedFor)
{
    startImporting();
    isQuitting = true;
    EXPECT_FALSE(window->close());
    isQuitting = false; // it stays for the time being
    buttonOf(find<QMessageBox>("stopImportAlert"), QStringLiteral("Stop and Close"))->click();
    EXPECT_TRUE(vm().isCancellingImport);
    EXPECT_EQ(quits, 0) << "the click is still the box's";
    QCoreApplication::processEvents();
    EXPECT_EQ(quits, 1);
    EXPECT_TRUE(window->close()) << "as the program does first when it ends";
}

TEST_F(ProgressOverlayTest, DoesWhatWasAskedForLast)
{
    QSignalSpy closed(window.get(), &ContentView::closed);
    startImporting();
    isQuitting = true;
    window->close();
    isQuitting = false;
    window->close();
    buttonOf(find<QMessageBox>("stopImportAlert"), QStringLiteral("Stop and Close"))->click();
    ASSERT_TRUE(closed.size() == 1 || closed.wait());
    EXPECT_EQ(quits, 0);
}

TEST_F(ProgressOverlayTest, TakesTheQuestionBackWhenTheImportEnds)
{
    startImporting();
    window->close();
    vm().isImporting = false;
    EXPECT_EQ(find<QMessageBox>("stopImportAlert"), nullptr);
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(window->close());
}
