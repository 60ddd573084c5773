#pragma once

#include "reader/PageCache.h"
#include "reader/PageContents.h"
#include "reader/PageScheduler.h"
#include "reader/Viewpoint.h"

#include <functional>
#include <memory>

/// What is there of the document that a view shows, and what is being fetched. Main thread.
class PageStock
{
public:
    explicit PageStock(qsizetype cacheBytes = kPageCacheBytes);

    /// Forgets everything of the document before; null for none.
    void setSource(std::unique_ptr<PageSource> source);
    PageSource *source() const { return m_source.get(); }
    /// The document was opened again after its engine was lost.
    void resume();

    struct Need {
        const Viewpoint &viewpoint;
        double pixelRatio = 1; ///< pixels of the screen a pixel of the viewport
        bool isDark = false;
        PageRange selected; ///< the pages whose texts a selection needs
    };
    /// Fetches what is missing, and stops what is fetched in vain.
    void fetch(const Need &need);
    /// Takes answers that have come while the main thread did something else: pictures before painting, sizes
    /// before what depends on them.
    void take(PageJob::Kind kind);

    PageCache &cache() { return m_cache; }
    const PageCache &cache() const { return m_cache; }
    const PageContents &contents() const { return m_contents; }
    /// Whether `tile` cannot be drawn.
    bool hasFailed(const PageTile &tile) const;

    /// Told of what came; texts and links are in `contents` then, pictures in `cache`. Sizes that cannot be
    /// had come as none.
    std::function<void(qint64 firstPage, const PageSizes &sizes)> sizesArrived;
    std::function<void(qint64 page)> pictureArrived; ///< or failed
    std::function<void(qint64 page)> contentArrived;

private:
    void keep(const PageJob &job, PageAnswer answer);

    PageCache m_cache;
    PageContents m_contents;
    std::unique_ptr<PageSource> m_source;
    std::unique_ptr<PageScheduler> m_scheduler; ///< asks the source, so it goes first
};
