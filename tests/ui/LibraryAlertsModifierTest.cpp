#include "ui/LibraryAlertsModifier.h"

#include "ui/WindowFixture.h"

#include <QClipboard>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTableView>
#include <gtest/gtest.h>

namespace
{
class LibraryAlerts : public ::testing::Test, public WindowFixture
{
protected:
    LibraryAlerts() { openWindow(); }

    QMessageBox *alert(const char *name) { return find<QMessageBox>(name); }
};

QStringList buttonTexts(const QMessageBox *box)
{
    QStringList texts;
    const QList<QAbstractButton *> buttons = box->buttons();
    for (const QAbstractButton *button : buttons)
        texts.append(button->text());
    texts.sort();
    return texts;
}

void expectTexts(const QMessageBox *box, const QString &title, const QString &message)
{
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->text(), title);
    EXPECT_EQ(box->windowTitle(), title);
    EXPECT_EQ(box->informativeText(), message);
    EXPECT_EQ(box->windowModality(), Qt::WindowModal);
}
} // namespace

TEST_F(LibraryAlerts, ShowAnErrorUntilItIsDismissed)
{
    vm().errorMessage = QStringLiteral("The disk is full.");
    QMessageBox *box = alert("noticeAlert");
    expectTexts(box, QStringLiteral("Notice"), QStringLiteral("The disk is full."));
    ASSERT_EQ(box->buttons().size(), 1);
    box->buttons().first()->click();
    EXPECT_EQ(vm().errorMessage.value(), std::nullopt);
    EXPECT_EQ(alert("noticeAlert"), nullptr);
}

TEST_F(LibraryAlerts, ShowTheLastErrorInPlaceOfTheOneBefore)
{
    vm().errorMessage = QStringLiteral("First.");
    vm().errorMessage = QStringLiteral("Second.");
    EXPECT_EQ(alert("noticeAlert")->informativeText(), QStringLiteral("Second."));
    EXPECT_EQ(vm().errorMessage.value(), QStringLiteral("Second."));
    QTest::keyClick(alert("noticeAlert"), Qt::Key_Escape);
    EXPECT_EQ(alert("noticeAlert"), nullptr);
}

TEST_F(LibraryAlerts, CloseWhenTheirFieldIsCleared)
{
    vm().errorMessage = QStringLiteral("Wrong.");
    vm().errorMessage = std::nullopt;
    EXPECT_EQ(alert("noticeAlert"), nullptr);
}

TEST_F(LibraryAlerts, ShowTextThatLooksLikeMarkupAsItIs)
{
    vm().errorMessage = QStringLiteral("<b>not</b> bold");
    const auto *label = find<QLabel>(alert("noticeAlert"), "qt_msgbox_informativelabel");
    EXPECT_EQ(label->textFormat(), Qt::PlainText);
}

TEST_F(LibraryAlerts, ShowWhatWasThereToSayBeforeTheWindow)
{
    window.reset();
    vm().errorMessage = QStringLiteral("The library could not be opened.");
    openWindow();
    EXPECT_EQ(alert("noticeAlert")->informativeText(), QStringLiteral("The library could not be opened."));
}

TEST_F(LibraryAlerts, TellHowManyFilesWereIndexed)
{
    vm().lastImportResult = IndexFilesResponse{{QStringLiteral("a"), QStringLiteral("b")}, {}};
    QMessageBox *box = alert("importCompleteAlert");
    expectTexts(box, QStringLiteral("Import Complete"), QStringLiteral("2 files successfully indexed."));
    ASSERT_EQ(box->buttons().size(), 1);
    box->buttons().first()->click();
    EXPECT_EQ(vm().lastImportResult.value(), std::nullopt);
}

TEST_F(LibraryAlerts, OfferTheFilesThatFailedWithTheirReasons)
{
    vm().lastImportResult =
        IndexFilesResponse{{QStringLiteral("a")},
                           {{QStringLiteral("/papers/old/broken.pdf"), QStringLiteral("It is damaged.")},
                            {QStringLiteral("/papers/secret.pdf"), QStringLiteral("It is locked.")}}};
    QMessageBox *box = alert("importCompleteAlert");
    expectTexts(box, QStringLiteral("Import Complete"),
                QStringLiteral("1 files successfully indexed.\n2 errors occurred."));

    find<QPushButton>(box, "showDetails")->click();
    auto *failures = find<QDialog>("importFailures");
    ASSERT_NE(failures, nullptr);
    EXPECT_TRUE(box->isVisible()) << "the list must not close the alert";
    const QAbstractItemModel *files = find<QTableView>(failures, "failedFiles")->model();
    ASSERT_EQ(files->rowCount(), 2);
    EXPECT_EQ(files->index(0, 0).data(), QStringLiteral("broken.pdf"));
    EXPECT_EQ(files->index(0, 1).data(), QStringLiteral("/papers/old"));
    EXPECT_EQ(files->index(0, 2).data(), QStringLiteral("It is damaged."));
}

TEST_F(LibraryAlerts, CopyTheFilesThatFailedAsText)
{
    vm().lastImportResult = IndexFilesResponse{{},
                                               {{QStringLiteral("/a/one.pdf"), QStringLiteral("Damaged.")},
                                                {QStringLiteral("/b/two.pdf"), QStringLiteral("Locked.")}}};
    find<QPushButton>(alert("importCompleteAlert"), "showDetails")->click();
    auto *failures = find<QDialog>("importFailures");
    find<QPushButton>(failures, "copyFailures")->click();
    EXPECT_EQ(QApplication::clipboard()->text(),
              QStringLiteral("one.pdf\t/a\tDamaged.\ntwo.pdf\t/b\tLocked."));

    auto *table = find<QTableView>(failures, "failedFiles");
    table->selectRow(1);
    QApplication::setActiveWindow(failures);
    QTest::keyClick(table, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("two.pdf\t/b\tLocked."));
}

TEST_F(LibraryAlerts, ShowTheOutcomeOfARetag)
{
    vm().retagResult = QStringLiteral("Retagged 12 of 140 papers.");
    expectTexts(alert("retagCompleteAlert"), QStringLiteral("Retag Complete"),
                QStringLiteral("Retagged 12 of 140 papers."));
    alert("retagCompleteAlert")->buttons().first()->click();
    EXPECT_EQ(vm().retagResult.value(), std::nullopt);
}

TEST_F(LibraryAlerts, AskBeforeAPaperIsRemoved)
{
    addPaper(QStringLiteral("p"), QStringLiteral("On <i>Growth</i>"));
    load();
    vm().requestDelete(vm().papers.value().first());
    const QMessageBox *box = alert("confirmDeleteAlert");
    expectTexts(
        box, QStringLiteral("Remove from Library?"),
        QStringLiteral("This will remove \"On <i>Growth</i>\" from the library and its index. The PDF "
                       "file itself will not be deleted."));
    EXPECT_EQ(buttonTexts(box), (QStringList{QStringLiteral("Cancel"), QStringLiteral("Remove")}));
}

TEST_F(LibraryAlerts, RemoveThePaperWhenThePersonAgrees)
{
    addPaper(QStringLiteral("p"), QStringLiteral("Growth"));
    load();
    vm().requestDelete(vm().papers.value().first());
    buttonOf(alert("confirmDeleteAlert"), QStringLiteral("Remove"))->click();
    EXPECT_EQ(vm().confirmDeletePaper.value(), std::nullopt);
    waitUntil(vm().papers, QList<Paper>());
    EXPECT_EQ(paper(QStringLiteral("p")), std::nullopt);
}

TEST_F(LibraryAlerts, KeepThePaperWhenReturnIsPressedByReflex)
{
    addPaper(QStringLiteral("p"), QStringLiteral("Growth"));
    load();
    vm().requestDelete(vm().papers.value().first());
    QTest::keyClick(alert("confirmDeleteAlert"), Qt::Key_Return);
    EXPECT_EQ(vm().confirmDeletePaper.value(), std::nullopt);
    EXPECT_EQ(alert("confirmDeleteAlert"), nullptr);
    EXPECT_TRUE(paper(QStringLiteral("p")).has_value());
}
