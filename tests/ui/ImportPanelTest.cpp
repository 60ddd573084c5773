#include "ui/ImportPanel.h"

#include "ui/WindowFixture.h"

#include <QDir>
#include <QFileSystemModel>
#include <QListView>
#include <QPushButton>
#include <QTreeView>
#include <gtest/gtest.h>

namespace
{
class ImportPanelTest : public ::testing::Test, public WindowFixture
{
protected:
    ImportPanelTest()
    {
        EXPECT_TRUE(QDir(library.folder.path()).mkpath(QStringLiteral("shelf/deep")));
        QFile file(library.folder.path(QStringLiteral("shelf/paper.pdf")));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        openWindow();
        commands.importPDFs->trigger();
        panel = find<ImportPanel>("importPanel");
        list = panel->findChild<QTreeView *>(QStringLiteral("treeView"));
        files = panel->findChild<QFileSystemModel *>();
        goTo(library.folder.path(QStringLiteral("shelf")));
    }

    void goTo(const QString &folder)
    {
        QSignalSpy loaded(files, &QFileSystemModel::directoryLoaded);
        panel->setDirectory(folder);
        while (!loaded.contains(QVariantList{folder}))
            ASSERT_TRUE(loaded.wait());
    }
    QModelIndex row(const QString &name) const
    {
        const QModelIndexList found =
            list->model()->match(list->model()->index(0, 0, list->rootIndex()), Qt::DisplayRole, name);
        return found.isEmpty() ? QModelIndex() : found.first();
    }
    void select(const QString &name)
    {
        list->selectionModel()->select(row(name), QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }

    ImportPanel *panel = nullptr;
    QTreeView *list = nullptr;
    QFileSystemModel *files = nullptr;
};
} // namespace

TEST_F(ImportPanelTest, IsTitledImportPDFs)
{
    EXPECT_EQ(panel->windowTitle(), QStringLiteral("Import PDFs"));
    EXPECT_EQ(panel->windowModality(), Qt::WindowModal);
}

TEST_F(ImportPanelTest, TakesFilesAndFoldersTogether)
{
    select(QStringLiteral("deep"));
    select(QStringLiteral("paper.pdf"));
    panel->accept();
    EXPECT_EQ(find<ImportPanel>("importPanel"), nullptr);
    waitUntil(vm().showImportPicker, true);
    EXPECT_EQ(vm().discoveredPDFs.value(),
              QStringList{library.folder.path(QStringLiteral("shelf/paper.pdf"))});
}

TEST_F(ImportPanelTest, EntersAFolderThatIsDoubleClicked)
{
    Q_EMIT list->activated(row(QStringLiteral("deep")));
    EXPECT_EQ(panel->directory().dirName(), QStringLiteral("deep"));
    EXPECT_TRUE(panel->isVisible());
}

TEST_F(ImportPanelTest, StaysOpenWithNothingSelected)
{
    panel->accept();
    EXPECT_TRUE(panel->isVisible());
}

TEST_F(ImportPanelTest, ImportsNothingWhenItIsDismissed)
{
    select(QStringLiteral("paper.pdf"));
    panel->reject();
    QCoreApplication::processEvents();
    EXPECT_FALSE(vm().isImporting);
    EXPECT_FALSE(vm().isLoading);
    EXPECT_EQ(vm().errorMessage.value(), std::nullopt);
}
