#include "reader/PageStock.h"

#include "reader/ReadingPlan.h"

PageStock::PageStock(qsizetype cacheBytes)
    : m_cache(cacheBytes)
{
}

void PageStock::setSource(std::unique_ptr<PageSource> source)
{
    m_scheduler.reset();
    m_source = std::move(source);
    m_cache.clear();
    m_contents.clear();
    if (!m_source)
        return;
    m_scheduler = std::make_unique<PageScheduler>(
        *m_source, [this](const PageJob &job, PageAnswer answer) { keep(job, std::move(answer)); },
        [this](const PageJob &job) {
            if (job.kind == PageJob::Kind::Sizes) // each page may still be drawn, or say that it cannot be
                sizesArrived(job.page, PageSizes(size_t(PageLayout::kBlockPages)));
            else if (job.kind == PageJob::Kind::Picture)
                pictureArrived(job.page);
        });
}

void PageStock::resume()
{
    if (m_scheduler)
        m_scheduler->resume();
}

void PageStock::fetch(const Need &need)
{
    if (!m_scheduler)
        return;
    m_contents.forgetBeyond(need.viewpoint.visiblePages());
    m_scheduler->setPlan(
        planReading({need.viewpoint, need.pixelRatio, need.isDark, need.selected, m_cache, m_contents}));
}

void PageStock::take(PageJob::Kind kind)
{
    if (m_source)
        m_source->handOver(kind);
}

bool PageStock::hasFailed(const PageTile &tile) const
{
    return m_scheduler && m_scheduler->hasFailed({PageJob::Kind::Picture, tile.page, tile});
}

void PageStock::keep(const PageJob &job, PageAnswer answer)
{
    switch (job.kind) {
    case PageJob::Kind::Sizes:
        return sizesArrived(job.page, std::get<PageSizes>(answer));
    case PageJob::Kind::Picture:
        m_cache.insert(job.tile, std::get<QImage>(answer));
        return pictureArrived(job.page);
    case PageJob::Kind::Text:
        m_contents.setText(job.page, std::get<PDFPageText>(answer));
        return contentArrived(job.page);
    case PageJob::Kind::Links:
        m_contents.setLinks(job.page, std::get<QList<PDFLink>>(answer));
        return contentArrived(job.page);
    }
}
