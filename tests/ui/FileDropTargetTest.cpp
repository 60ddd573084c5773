#include "ui/FileDropTarget.h"

#include "ui/Drag.h"
#include "ui/SearchField.h"
#include "ui/WindowFixture.h"

#include <QDialog>
#include <QPushButton>
#include <gtest/gtest.h>

namespace
{
class FileDropTargetTest : public ::testing::Test, public WindowFixture
{
protected:
    FileDropTargetTest() { openWindow(); }
};

std::unique_ptr<QMimeData> urls(const QStringList &addresses)
{
    auto content = std::make_unique<QMimeData>();
    QList<QUrl> list;
    for (const QString &address : addresses)
        list.append(QUrl(address));
    content->setUrls(list);
    return content;
}
} // namespace

TEST_F(FileDropTargetTest, ImportsADroppedFileAtOnce)
{
    const QString path = library.folder.write(QStringLiteral("new.pdf"), {});
    Drag drag(*window, urls({QUrl::fromLocalFile(path).toString()}));
    ASSERT_NE(find<QWidget>("fileDropTarget"), nullptr);
    EXPECT_TRUE(drag.moveTo(find<SearchField>("searchField"))) << "anywhere on the window";
    drag.drop();
    EXPECT_EQ(find<QWidget>("fileDropTarget"), nullptr);
    waitUntil(vm().lastImportResult, [](const auto &result) { return result.has_value(); });
    EXPECT_EQ(vm().lastImportResult.value()->indexed, QStringList{u"id of " + path});
}

TEST_F(FileDropTargetTest, ReviewsADroppedFolder)
{
    library.folder.write(QStringLiteral("one.pdf"), {});
    library.folder.write(QStringLiteral("two.PDF"), {});
    Drag drag(*window, urls({QUrl::fromLocalFile(library.folder.path()).toString()}));
    EXPECT_TRUE(drag.moveTo(window.get()));
    drag.drop();
    waitUntil(vm().showImportPicker, true);
    EXPECT_EQ(vm().discoveredPDFs.value().size(), 2);
    ASSERT_NE(find<QDialog>("importPicker"), nullptr);
    find<QPushButton>("importSelected")->click();
    waitUntil(vm().lastImportResult, [](const auto &result) { return result.has_value(); });
    EXPECT_EQ(vm().lastImportResult.value()->indexed.size(), 2);
}

TEST_F(FileDropTargetTest, RefusesFilesWhileAnImportRuns)
{
    vm().isImporting = true;
    Drag drag(*window, urls({QStringLiteral("file:///papers/new.pdf")}));
    EXPECT_EQ(find<QWidget>("fileDropTarget"), nullptr);
    EXPECT_FALSE(drag.moveTo(window.get()));
}

TEST_F(FileDropTargetTest, RefusesWhatIsNotOnThisMachine)
{
    Drag drag(*window, urls({QStringLiteral("https://papers.example/new.pdf")}));
    EXPECT_EQ(find<QWidget>("fileDropTarget"), nullptr);
    EXPECT_FALSE(drag.moveTo(window.get()));
}

TEST_F(FileDropTargetTest, RefusesFilesUnderAnAlert)
{
    vm().errorMessage = QStringLiteral("Wrong.");
    Drag drag(*window, urls({QStringLiteral("file:///papers/new.pdf")}));
    EXPECT_EQ(find<QWidget>("fileDropTarget"), nullptr);
}

TEST_F(FileDropTargetTest, ForgetsADragThatLeaves)
{
    Drag drag(*window, urls({QStringLiteral("file:///papers/new.pdf")}));
    drag.leave();
    EXPECT_EQ(find<QWidget>("fileDropTarget"), nullptr);
}
