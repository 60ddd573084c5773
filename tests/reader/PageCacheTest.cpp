#include "reader/PageCache.h"

#include <gtest/gtest.h>

namespace
{
constexpr int kBytes = 10 * 10 * 4;

PageTile tileOf(qint64 page, double scale = 1)
{
    return {page, {scale, 0, false}, QRect(0, 0, 10, 10)};
}

QImage pictureOf(QSize size = {10, 10})
{
    return QImage(size, QImage::Format_RGB32);
}
} // namespace

TEST(PageCache, KeepsPicturesUpToItsLimit)
{
    PageCache cache(3 * kBytes);
    for (qint64 page = 0; page < 10; ++page) {
        cache.insert(tileOf(page), pictureOf());
        EXPECT_LE(cache.bytes(), cache.limitBytes());
    }
    EXPECT_EQ(cache.bytes(), 3 * kBytes);
    EXPECT_FALSE(cache.contains(tileOf(6)));
    EXPECT_TRUE(cache.contains(tileOf(7)));
}

TEST(PageCache, LetsGoOfWhatWasNotLookedAtForLongest)
{
    PageCache cache(3 * kBytes);
    for (qint64 page = 0; page < 3; ++page)
        cache.insert(tileOf(page), pictureOf());
    EXPECT_NE(cache.find(tileOf(0)), nullptr);
    cache.insert(tileOf(3), pictureOf());
    EXPECT_TRUE(cache.contains(tileOf(0)));
    EXPECT_FALSE(cache.contains(tileOf(1)));
}

TEST(PageCache, TakesNoPictureBeyondItsLimit)
{
    PageCache cache(3 * kBytes);
    cache.insert(tileOf(0), pictureOf());
    cache.insert(tileOf(1), pictureOf({100, 100}));
    EXPECT_TRUE(cache.contains(tileOf(0)));
    EXPECT_FALSE(cache.contains(tileOf(1)));
}

TEST(PageCache, CountsAPictureThatReplacesAnotherOnce)
{
    PageCache cache(3 * kBytes);
    cache.insert(tileOf(0), pictureOf());
    cache.insert(tileOf(0), pictureOf());
    EXPECT_EQ(cache.bytes(), kBytes);
}

TEST(PageCache, OffersTheSmallestScaleAndOverItTheNearestAsStandIns)
{
    PageCache cache(100 * kBytes);
    for (const double scale : {0.25, 1.0, 4.0, 8.0})
        cache.insert(tileOf(0, scale), pictureOf());
    const auto standIns = cache.standIns(0, {1.2, 0, false});
    ASSERT_EQ(standIns.size(), 2u);
    EXPECT_DOUBLE_EQ(standIns[0].tile.style.scale, 0.25);
    EXPECT_DOUBLE_EQ(standIns[1].tile.style.scale, 1);
}

TEST(PageCache, PrefersAStandInThatIsTooLargeToABlurredOne)
{
    PageCache cache(100 * kBytes);
    for (const double scale : {4.0, 1.0})
        cache.insert(tileOf(0, scale), pictureOf());
    EXPECT_DOUBLE_EQ(cache.standIns(0, {2, 0, false}).back().tile.style.scale, 4);
}

TEST(PageCache, OffersNoStandInOfAnotherPageOrLook)
{
    PageCache cache(100 * kBytes);
    cache.insert(tileOf(0), pictureOf());
    EXPECT_TRUE(cache.standIns(1, {2, 0, false}).empty());
    EXPECT_TRUE(cache.standIns(0, {2, 1, false}).empty());
    EXPECT_TRUE(cache.standIns(0, {2, 0, true}).empty());
}
