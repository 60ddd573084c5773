#include "reader/ReadingPlan.h"

#include <algorithm>
#include <cmath>

namespace
{
class Planner
{
public:
    explicit Planner(const ReadingState &state)
        : m_state(state)
        , m_view(state.viewpoint)
        , m_style(pageStyle(m_view, state.pixelRatio, state.isDark, state.cache.limitBytes()))
        , m_freeBytes(state.cache.limitBytes())
    {
    }

    std::vector<PlannedJob> plan()
    {
        const PageRange visible = m_view.visiblePages();
        const PageRange around = m_view.pagesAround();
        const QRectF frame(QPointF(), m_view.viewport());
        addSizes(visible, true);
        addPictures(visible, frame, true);
        addContents(visible, true);
        addPictures(around, frame.translated(0, frame.height()), false);
        addPictures(around, frame.translated(0, -frame.height()), false);
        addSizes({around.first - PageLayout::kBlockPages / 2, around.last + PageLayout::kBlockPages / 2},
                 false);
        addTexts({m_state.selected.first,
                  std::min(m_state.selected.last, m_state.selected.first + kMostSelectedPages - 1)});
        return std::move(m_jobs);
    }

private:
    void addSizes(PageRange pages, bool isVisible)
    {
        const qint64 first = std::max<qint64>(pages.first, 0);
        const qint64 last = std::min(pages.last, m_view.layout().pageCount() - 1);
        for (qint64 page = first; page <= last; ++page) {
            const qint64 block = page / PageLayout::kBlockPages * PageLayout::kBlockPages;
            if (!m_view.layout().isKnown(page))
                add({PageJob::Kind::Sizes, block, {}}, isVisible);
            page = block + PageLayout::kBlockPages - 1;
        }
    }

    void addPictures(PageRange pages, const QRectF &frame, bool isVisible)
    {
        for (qint64 page = pages.first; page <= pages.last; ++page) {
            if (!m_view.layout().isKnown(page))
                continue;
            for (const PageTile &tile : tilesWithin(m_view, page, m_style, frame))
                addPicture(tile, isVisible);
        }
    }

    void addPicture(const PageTile &tile, bool isVisible)
    {
        if (std::find(m_tiles.begin(), m_tiles.end(), tile) != m_tiles.end() || bytesOf(tile) > m_freeBytes)
            return;
        m_tiles.push_back(tile);
        m_freeBytes -= bytesOf(tile);
        if (!m_state.cache.contains(tile))
            add({PageJob::Kind::Picture, tile.page, tile}, isVisible);
    }

    void addContents(PageRange pages, bool isVisible)
    {
        for (qint64 page = pages.first; page <= pages.last; ++page) {
            if (!m_view.layout().isKnown(page)) // else they would come before its picture
                continue;
            if (!m_state.contents.text(page))
                add({PageJob::Kind::Text, page, {}}, isVisible);
            if (!m_state.contents.links(page))
                add({PageJob::Kind::Links, page, {}}, isVisible);
        }
    }

    /// Never so many that some drive out others, which would be asked for again.
    void addTexts(PageRange pages)
    {
        if (m_state.contents.bytes() > kPageTextBytes / 2)
            return;
        const PageRange visible = m_view.visiblePages();
        for (qint64 page = pages.first; page <= pages.last; ++page) {
            if (!visible.contains(page) && !m_state.contents.text(page))
                add({PageJob::Kind::Text, page, {}}, false);
        }
    }

    void add(const PageJob &job, bool isVisible)
    {
        const auto isSame = [&job](const PlannedJob &planned) {
            return planned.job == job;
        };
        if (std::none_of(m_jobs.begin(), m_jobs.end(), isSame))
            m_jobs.push_back({job, isVisible});
    }

    const ReadingState &m_state;
    const Viewpoint &m_view;
    const PageStyle m_style;
    qint64 m_freeBytes;
    std::vector<PageTile> m_tiles; ///< wanted, whether there or not
    std::vector<PlannedJob> m_jobs;
};
} // namespace

std::vector<PlannedJob> planReading(const ReadingState &state)
{
    return Planner(state).plan();
}

PageStyle pageStyle(const Viewpoint &viewpoint, double pixelRatio, bool isDark, qsizetype cacheBytes)
{
    const QSizeF screen = viewpoint.viewport() * pixelRatio;
    const double bytes = screen.width() * screen.height() * 4;
    const double sharpness = std::min(1.0, std::sqrt(double(cacheBytes) / 2 / std::max(bytes, 1.0)));
    return {viewpoint.scale() * pixelRatio * sharpness, viewpoint.layout().turns(), isDark};
}

std::vector<PageTile> tilesWithin(const Viewpoint &viewpoint, qint64 page, const PageStyle &style,
                                  const QRectF &frame)
{
    const QRectF shown = viewpoint.pageRect(page);
    const QRectF part = shown.intersected(frame).translated(-shown.topLeft());
    if (part.isEmpty())
        return {};
    const double ratio = style.scale / viewpoint.scale();
    const QRectF pixels(part.topLeft() * ratio, part.size() * ratio);
    return tilesOf(page, viewpoint.layout().size(page), style, pixels.toAlignedRect());
}
