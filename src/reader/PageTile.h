#pragma once

#include <QRect>
#include <QSizeF>
#include <QtGlobal>
#include <vector>

/// How a page is drawn.
struct PageStyle {
    double scale = 1; ///< pixels of the screen a point
    int turns = 0;    ///< quarters clockwise, beyond the page's own rotation
    bool isDark = false;

    friend bool operator==(const PageStyle &, const PageStyle &) = default;
};

/// A part of a page's picture. Small pages are one tile; large ones are many, so that memory follows the
/// screen and not the zoom.
struct PageTile {
    qint64 page = 0;
    PageStyle style;
    QRect part; ///< in pixels of the whole page

    friend bool operator==(const PageTile &, const PageTile &) = default;
};

/// What a tile's picture takes, at four bytes a pixel.
qint64 bytesOf(const PageTile &tile);

/// Pages of up to so many pixels are drawn whole, which costs the engine less than parts do: an A4 page that
/// fits the width of a 4K screen at half its width, and any screen's common window. Chosen.
inline constexpr qint64 kWholePagePixels = 8 * 1024 * 1024;
/// Of the tiles of a larger page. Wide, because the engine's work grows with the number of tiles.
inline constexpr QSize kTileSize(2048, 1024);

/// A page of `size` points (turned) in whole pixels.
QSize pagePixels(QSizeF size, double scale);

/// The tiles that cover `wanted` (pixels of the whole page), from the top.
std::vector<PageTile> tilesOf(qint64 page, QSizeF size, const PageStyle &style, QRect wanted);
