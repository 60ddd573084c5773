#include "ui/CoverCache.h"
#include "support/Printing.h"
#include "support/TemporaryFolder.h"

#include <QEventLoop>
#include <QFile>
#include <QImage>
#include <QSignalSpy>

namespace
{
constexpr QSize kBox(168, 224);

class CoverCacheTest : public ::testing::Test
{
protected:
    QString writeCover(const QString &name, QColor colour)
    {
        QImage image(300, 400, QImage::Format_RGB32);
        image.fill(colour);
        const QString path = folder.path(name);
        EXPECT_TRUE(image.save(path));
        return path;
    }
    void waitForArrival()
    {
        QEventLoop loop;
        QObject::connect(&cache, &CoverCache::arrived, &loop, &QEventLoop::quit);
        loop.exec();
    }
    QPixmap readCover(const QString &path)
    {
        EXPECT_TRUE(cache.cover(path, kBox).isNull()) << "it is read on another thread";
        waitForArrival();
        return cache.cover(path, kBox);
    }

    TemporaryFolder folder;
    CoverCache cache;
    QSignalSpy arrivals{&cache, &CoverCache::arrived};
};
} // namespace

TEST_F(CoverCacheTest, ReadsACoverAndTellsWhenItCanBeHad)
{
    const QString path = writeCover(QStringLiteral("a.jpg"), Qt::red);
    EXPECT_EQ(readCover(path).size(), kBox);
    ASSERT_EQ(arrivals.size(), 1);
    EXPECT_EQ(arrivals.at(0).at(0).toString(), path);
}

TEST_F(CoverCacheTest, HasNoCoverWithoutAPath)
{
    EXPECT_TRUE(cache.cover({}, kBox).isNull());
    EXPECT_TRUE(cache.cover(writeCover(QStringLiteral("a.jpg"), Qt::red), {}).isNull());
}

TEST_F(CoverCacheTest, KeepsACoverForEachSize)
{
    const QString path = writeCover(QStringLiteral("a.jpg"), Qt::red);
    readCover(path);
    EXPECT_TRUE(cache.cover(path, kBox * 2).isNull());
    waitForArrival();
    EXPECT_EQ(cache.cover(path, kBox * 2).size(), kBox * 2);
    EXPECT_EQ(cache.cover(path, kBox).size(), kBox);
}

TEST_F(CoverCacheTest, TellsWhichFilesAreGone)
{
    const QString gone = folder.path(QStringLiteral("gone.pdf"));
    const QString there = folder.write(QStringLiteral("there.pdf"), "x");
    EXPECT_FALSE(cache.isFileMissing(there));
    EXPECT_FALSE(cache.isFileMissing(gone)) << "not known yet";
    waitForArrival();
    EXPECT_TRUE(cache.isFileMissing(gone));
    EXPECT_FALSE(cache.isFileMissing(there));
    EXPECT_EQ(arrivals.at(0).at(0).toString(), gone);
}

TEST_F(CoverCacheTest, SeesAFileComeBackWhenToldToCheck)
{
    const QString path = folder.path(QStringLiteral("a.pdf"));
    cache.isFileMissing(path);
    waitForArrival();
    folder.write(QStringLiteral("a.pdf"), "x");
    EXPECT_TRUE(cache.isFileMissing(path)) << "asks once";
    cache.recheck();
    EXPECT_TRUE(cache.isFileMissing(path)) << "the old answer stands until the new one is there";
    waitForArrival();
    EXPECT_FALSE(cache.isFileMissing(path));
}

TEST_F(CoverCacheTest, ReadsACoverThatCameLater)
{
    const QString path = folder.path(QStringLiteral("late.jpg"));
    // Answered after the cover, because the newest question goes first.
    const QString gone = folder.path(QStringLiteral("gone.pdf"));
    cache.cover(path, kBox);
    cache.isFileMissing(gone);
    waitForArrival();
    writeCover(QStringLiteral("late.jpg"), Qt::blue);
    cache.recheck();
    cache.cover(path, kBox);
    waitForArrival();
    EXPECT_EQ(cache.cover(path, kBox).size(), kBox);
}

TEST_F(CoverCacheTest, EndsWhileCoversAreWaiting)
{
    const QString path = writeCover(QStringLiteral("a.jpg"), Qt::red);
    CoverCache ending;
    for (int side = 1; side <= 100; ++side)
        EXPECT_TRUE(ending.cover(path, {side, side}).isNull());
}
