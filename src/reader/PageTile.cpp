#include "reader/PageTile.h"

#include <algorithm>

namespace
{
/// As far as pictures reach in either direction: what `int` arithmetic of rectangles bears.
constexpr double kMostPixels = 1 << 23;

int pixels(double points, double scale)
{
    return int(std::clamp(std::round(points * scale), 1.0, kMostPixels));
}
} // namespace

qint64 bytesOf(const PageTile &tile)
{
    return qint64(tile.part.width()) * tile.part.height() * 4;
}

QSize pagePixels(QSizeF size, double scale)
{
    return {pixels(size.width(), scale), pixels(size.height(), scale)};
}

std::vector<PageTile> tilesOf(qint64 page, QSizeF size, const PageStyle &style, QRect wanted)
{
    const QRect whole(QPoint(), pagePixels(size, style.scale));
    const QRect covered = wanted.intersected(whole);
    if (covered.isEmpty())
        return {};
    if (qint64(whole.width()) * whole.height() <= kWholePagePixels)
        return {{page, style, whole}};
    std::vector<PageTile> tiles;
    const auto startOf = [](int at, int side) {
        return at / side * side;
    };
    for (int y = startOf(covered.top(), kTileSize.height()); y <= covered.bottom(); y += kTileSize.height()) {
        for (int x = startOf(covered.left(), kTileSize.width()); x <= covered.right(); x += kTileSize.width())
            tiles.push_back({page, style, QRect(QPoint(x, y), kTileSize).intersected(whole)});
    }
    return tiles;
}
