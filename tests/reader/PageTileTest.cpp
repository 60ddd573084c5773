#include "reader/PageTile.h"

#include <QRegion>
#include <gtest/gtest.h>

namespace
{
const PageStyle kStyle = {8, 0, false};
constexpr QSizeF kA4(595, 842);
} // namespace

TEST(PageTile, IsAWholePageWhileThatIsSmall)
{
    const auto tiles = tilesOf(3, kA4, {2, 1, true}, QRect(0, 0, 50, 50));
    ASSERT_EQ(tiles.size(), 1u);
    EXPECT_EQ(tiles.front(), (PageTile{3, {2, 1, true}, QRect(0, 0, 1190, 1684)}));
}

TEST(PageTile, IsAPartOfALargePage)
{
    const auto tiles = tilesOf(0, kA4, kStyle, QRect(100, 1000, 1500, 900));
    ASSERT_EQ(tiles.size(), 2u);
    EXPECT_EQ(tiles[0].part, QRect(QPoint(0, 0), kTileSize));
    EXPECT_EQ(tiles[1].part, QRect(QPoint(0, kTileSize.height()), kTileSize));
}

TEST(PageTile, CoversEveryPixelWantedOnce)
{
    const QRect whole(QPoint(), pagePixels(kA4, kStyle.scale));
    QRegion covered;
    for (const PageTile &tile : tilesOf(0, kA4, kStyle, whole)) {
        EXPECT_FALSE(covered.intersects(tile.part));
        EXPECT_TRUE(whole.contains(tile.part));
        covered += tile.part;
    }
    EXPECT_EQ(covered, QRegion(whole));
}

TEST(PageTile, IsNothingBesideThePage)
{
    EXPECT_TRUE(tilesOf(0, kA4, kStyle, QRect(-50, -50, 40, 40)).empty());
    EXPECT_TRUE(tilesOf(0, kA4, kStyle, QRect(100000, 0, 40, 40)).empty());
}

TEST(PageTile, HasAPixelAtLeast)
{
    EXPECT_EQ(pagePixels({0.001, 3e7}, 0.1), QSize(1, 3000000));
}
