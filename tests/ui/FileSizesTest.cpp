#include "ui/FileSizes.h"

#include "support/BusyThreads.h"
#include "support/TemporaryFolder.h"

#include <QEventLoop>
#include <QMap>
#include <gtest/gtest.h>

namespace
{

class FileSizesTest : public testing::Test
{
protected:
    /// What is told of the files, by their places in the list.
    QMap<int, qint64> sizesOf(const QStringList &paths)
    {
        QMap<int, qint64> told;
        QEventLoop loop;
        QObject::connect(&sizes, &FileSizes::arrived, &loop, [&](int key, qint64 bytes) {
            told.insert(key, bytes);
            if (told.size() == paths.size())
                loop.quit();
        });
        for (int i = 0; i < paths.size(); ++i)
            sizes.request(i, paths[i]);
        loop.exec();
        return told;
    }

    TemporaryFolder folder;
    FileSizes sizes;
};

} // namespace

TEST_F(FileSizesTest, TellsTheSizeOfEachFileUnderItsKey)
{
    const QStringList paths{folder.write(QStringLiteral("four"), "1234"),
                            folder.write(QStringLiteral("none"), "")};
    EXPECT_EQ(sizesOf(paths), (QMap<int, qint64>{{0, 4}, {1, 0}}));
}

TEST_F(FileSizesTest, SaysThatTheSizeOfAMissingFileCannotBeTold)
{
    EXPECT_EQ(sizesOf({folder.path(QStringLiteral("missing"))}), (QMap<int, qint64>{{0, -1}}));
}

TEST_F(FileSizesTest, NeedsNoneOfTheThreadsThatQtPaintsWith)
{
    const BusyThreads busy;
    EXPECT_EQ(sizesOf({folder.write(QStringLiteral("one"), "1")}), (QMap<int, qint64>{{0, 1}}));
}
