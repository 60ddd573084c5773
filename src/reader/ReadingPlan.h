#pragma once

#include "reader/PageCache.h"
#include "reader/PageContents.h"
#include "reader/PageJob.h"
#include "reader/Viewpoint.h"

#include <vector>

/// What there is already, and what the view shows.
struct ReadingState {
    const Viewpoint &viewpoint;
    double pixelRatio; ///< pixels of the screen a pixel of the viewport
    bool isDark;
    PageRange selected; ///< the pages whose texts a selection needs
    const PageCache &cache;
    const PageContents &contents;
};

/// Pages with a text that a selection spans are asked for ahead; of longer ones only those looked at. Chosen:
/// more than anybody bookmarks.
inline constexpr qint64 kMostSelectedPages = 50;

/// What to ask for, the most urgent first: sizes, pictures, texts and links of what is visible, then the
/// pictures one viewport's height below and above, sizes around, and texts of what is selected. Pictures are
/// planned up to the cache's limit, so that none drives out one that is as much needed.
std::vector<PlannedJob> planReading(const ReadingState &state);

/// How pages are drawn for `viewpoint`. Less sharp than the screen only where one viewport would take more
/// than half of the cache.
PageStyle pageStyle(const Viewpoint &viewpoint, double pixelRatio, bool isDark, qsizetype cacheBytes);
/// The tiles of a page that `frame` shows, a part of the viewport or around it.
std::vector<PageTile> tilesWithin(const Viewpoint &viewpoint, qint64 page, const PageStyle &style,
                                  const QRectF &frame);
