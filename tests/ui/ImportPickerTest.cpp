#include "ui/ImportPicker.h"

#include "ui/WindowFixture.h"

#include <QCheckBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <gtest/gtest.h>

namespace
{
/// The parts of the sheet that is open.
struct Sheet {
    explicit Sheet(QDialog *picker)
        : dialog(picker)
        , filter(picker->findChild<QLineEdit *>(QStringLiteral("pickerFilter")))
        , all(picker->findChild<QCheckBox *>(QStringLiteral("selectAll")))
        , table(picker->findChild<QTableView *>(QStringLiteral("pickerFiles")))
        , count(picker->findChild<QLabel *>(QStringLiteral("tickedCount")))
        , import(picker->findChild<QPushButton *>(QStringLiteral("importSelected")))
        , cancel(picker->findChild<QPushButton *>(QStringLiteral("cancelPicker")))
    {
    }

    QString text(int row, int column) const { return table->model()->index(row, column).data().toString(); }
    bool isTicked(int row) const
    {
        return table->model()->index(row, 0).data(Qt::CheckStateRole) == Qt::Checked;
    }
    void click(int row, int column = 0)
    {
        const QRect cell = table->visualRect(table->model()->index(row, column));
        QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, cell.center());
    }

    QDialog *dialog;
    QLineEdit *filter;
    QCheckBox *all;
    QTableView *table;
    QLabel *count;
    QPushButton *import;
    QPushButton *cancel;
};

class ImportPickerTest : public ::testing::Test, public WindowFixture
{
protected:
    Sheet review(const QStringList &paths)
    {
        openWindow();
        vm().discoveredPDFs = paths;
        vm().showImportPicker = true;
        return Sheet(find<QDialog>("importPicker"));
    }
    Sheet reviewThree()
    {
        return review({QStringLiteral("/papers/a.pdf"), QStringLiteral("/papers/old/b.pdf"),
                       QStringLiteral("/letters/c.pdf")});
    }
};

QStringList manyPaths(int count)
{
    QStringList paths;
    for (int i = 0; i < count; ++i)
        paths.append(QStringLiteral("/papers/%1/paper %2.pdf").arg(i % 50).arg(i));
    return paths;
}
} // namespace

TEST_F(ImportPickerTest, ExplainsItself)
{
    const Sheet sheet = reviewThree();
    EXPECT_EQ(sheet.dialog->windowTitle(), QStringLiteral("Import Review"));
    EXPECT_EQ(find<QLabel>(sheet.dialog, "pickerExplanation")->text(),
              QStringLiteral("Select which of the discovered PDFs you want to add to your library."));
    EXPECT_EQ(sheet.all->text(), QStringLiteral("Select All (3 new PDFs found)"));
    EXPECT_EQ(sheet.count->text(), QStringLiteral("3 selected"));
    EXPECT_EQ(sheet.import->text(), QStringLiteral("Import Selected"));
    EXPECT_EQ(sheet.cancel->text(), QStringLiteral("Cancel"));
}

TEST_F(ImportPickerTest, ShowsNameAndFolderOfEachFile)
{
    const Sheet sheet = reviewThree();
    EXPECT_EQ(sheet.text(1, 0), QStringLiteral("b.pdf"));
    EXPECT_EQ(sheet.text(1, 1), QStringLiteral("/papers/old"));
}

TEST_F(ImportPickerTest, ReadsSizesInTheBackground)
{
    const QString path = library.folder.path(QStringLiteral("small.pdf"));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(2048, 'x'));
    file.close();
    const Sheet sheet = review({QStringLiteral("/nowhere/gone.pdf"), path});

    QSignalSpy changes(sheet.table->model(), &QAbstractItemModel::dataChanged);
    EXPECT_EQ(sheet.text(1, 2), QString()) << "the main thread asks no disk";
    while (changes.size() < 2)
        ASSERT_TRUE(changes.wait());
    EXPECT_EQ(sheet.text(1, 2), QLocale().formattedDataSize(2048, 1, QLocale::DataSizeTraditionalFormat));
    EXPECT_EQ(sheet.text(0, 2), QString());
}

TEST_F(ImportPickerTest, TogglesARowByOneClickAnywhereOnIt)
{
    Sheet sheet = reviewThree();
    sheet.click(1, 1);
    EXPECT_FALSE(sheet.isTicked(1));
    EXPECT_EQ(sheet.count->text(), QStringLiteral("2 selected"));
    sheet.click(1, 0);
    EXPECT_TRUE(sheet.isTicked(1));
}

TEST_F(ImportPickerTest, TogglesOnceByAClickOnTheBoxItself)
{
    const Sheet sheet = reviewThree();
    const QRect cell = sheet.table->visualRect(sheet.table->model()->index(0, 0));
    QTest::mouseClick(sheet.table->viewport(), Qt::LeftButton, {}, {cell.left() + 10, cell.center().y()});
    EXPECT_FALSE(sheet.isTicked(0));
}

TEST_F(ImportPickerTest, TogglesTheSelectedRowsWithSpace)
{
    const Sheet sheet = reviewThree();
    sheet.table->selectRow(0);
    QTest::keyClick(sheet.table, Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(sheet.table, Qt::Key_Space);
    EXPECT_FALSE(sheet.isTicked(0));
    EXPECT_FALSE(sheet.isTicked(1));
    EXPECT_TRUE(sheet.isTicked(2));
    QTest::keyClick(sheet.table, Qt::Key_Space);
    EXPECT_EQ(sheet.count->text(), QStringLiteral("3 selected"));
}

TEST_F(ImportPickerTest, TicksAndUnticksEveryRowAtOnce)
{
    Sheet sheet = reviewThree();
    EXPECT_EQ(sheet.all->checkState(), Qt::Checked);
    sheet.click(0);
    EXPECT_EQ(sheet.all->checkState(), Qt::PartiallyChecked);
    sheet.all->click();
    EXPECT_EQ(sheet.all->checkState(), Qt::Checked);
    sheet.all->click();
    EXPECT_EQ(sheet.all->checkState(), Qt::Unchecked);
    EXPECT_EQ(sheet.count->text(), QStringLiteral("0 selected"));
}

TEST_F(ImportPickerTest, ImportsNothingWithoutATick)
{
    const Sheet sheet = reviewThree();
    EXPECT_TRUE(sheet.import->isEnabled());
    sheet.all->click();
    EXPECT_FALSE(sheet.import->isEnabled());
}

TEST_F(ImportPickerTest, FiltersByWordsOfNameAndFolderInAnyCase)
{
    const Sheet sheet = reviewThree();
    QTest::keyClicks(sheet.filter, QStringLiteral("PAPERS b"));
    ASSERT_EQ(sheet.table->model()->rowCount(), 1);
    EXPECT_EQ(sheet.text(0, 0), QStringLiteral("b.pdf"));
    EXPECT_EQ(sheet.all->text(), QStringLiteral("Select Shown (1 of 3 new PDFs)"));
    sheet.filter->clear();
    EXPECT_EQ(sheet.table->model()->rowCount(), 3);
    EXPECT_EQ(sheet.all->text(), QStringLiteral("Select All (3 new PDFs found)"));
}

TEST_F(ImportPickerTest, LeavesFilesAloneThatTheFilterHides)
{
    const Sheet sheet = reviewThree();
    sheet.filter->setText(QStringLiteral("papers"));
    sheet.all->click();
    EXPECT_EQ(sheet.count->text(), QStringLiteral("1 selected")) << "the letter stays ticked";
    EXPECT_TRUE(sheet.import->isEnabled());
}

TEST_F(ImportPickerTest, ClearsTheFilterOnTheFirstEscapeAndClosesOnTheSecond)
{
    const Sheet sheet = reviewThree();
    sheet.filter->setText(QStringLiteral("papers"));
    QTest::keyClick(sheet.filter, Qt::Key_Escape);
    EXPECT_TRUE(sheet.dialog->isVisible());
    EXPECT_TRUE(sheet.filter->text().isEmpty());
    QTest::keyClick(sheet.filter, Qt::Key_Escape);
    EXPECT_FALSE(sheet.dialog->isVisible());
}

TEST_F(ImportPickerTest, ImportsTheTickedFilesInListOrder)
{
    Sheet sheet = reviewThree();
    sheet.click(1);
    sheet.import->click();
    EXPECT_FALSE(vm().showImportPicker);
    waitUntil(vm().lastImportResult, [](const auto &result) { return result.has_value(); });
    QStringList indexed = vm().lastImportResult.value()->indexed;
    indexed.sort();
    EXPECT_EQ(indexed,
              (QStringList{QStringLiteral("id of /letters/c.pdf"), QStringLiteral("id of /papers/a.pdf")}));
}

TEST_F(ImportPickerTest, ImportsNothingOnCancel)
{
    const Sheet sheet = reviewThree();
    sheet.cancel->click();
    EXPECT_FALSE(vm().showImportPicker);
    EXPECT_FALSE(vm().isImporting);
    EXPECT_EQ(find<QDialog>("importPicker"), nullptr);
}

TEST_F(ImportPickerTest, ClosesWhenTheViewModelTakesTheReviewBack)
{
    reviewThree();
    vm().showImportPicker = false;
    EXPECT_EQ(find<QDialog>("importPicker"), nullptr);
}

TEST_F(ImportPickerTest, HandlesTwentyThousandFiles)
{
    Sheet sheet = review(manyPaths(20'000));
    EXPECT_EQ(sheet.all->text(), QStringLiteral("Select All (20000 new PDFs found)"));
    EXPECT_EQ(sheet.count->text(), QStringLiteral("20000 selected"));
    sheet.filter->setText(QStringLiteral("paper 1999"));
    EXPECT_EQ(sheet.table->model()->rowCount(), 12); // 1999, 11999 and 19990 to 19999
    sheet.click(0);
    EXPECT_EQ(sheet.count->text(), QStringLiteral("19999 selected"));
    sheet.filter->clear();
    EXPECT_FALSE(sheet.isTicked(1999));
    EXPECT_EQ(sheet.all->checkState(), Qt::PartiallyChecked);
}
