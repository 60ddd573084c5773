#include "reader/PageContents.h"

namespace
{
qsizetype bytesOf(const PDFPageText &text)
{
    return text.string().size() * qsizetype(sizeof(QChar) + sizeof(QRectF));
}

/// Of a link's address, about.
constexpr qsizetype kAddressBytes = 256;

qsizetype bytesOf(const QList<PDFLink> &links)
{
    return links.size() * (qsizetype(sizeof(PDFLink)) + kAddressBytes);
}
} // namespace

void PageContents::clear()
{
    m_pages.clear();
    m_bytes = 0;
}

const PDFPageText *PageContents::text(qint64 page) const
{
    const auto found = m_pages.find(page);
    return found != m_pages.end() && found->second.text ? &*found->second.text : nullptr;
}

std::vector<qint64> PageContents::pagesWithText(PageRange among) const
{
    std::vector<qint64> pages;
    for (auto page = m_pages.lower_bound(among.first); page != m_pages.end() && page->first <= among.last;
         ++page) {
        if (page->second.text)
            pages.push_back(page->first);
    }
    return pages;
}

void PageContents::setText(qint64 page, const PDFPageText &text)
{
    std::optional<PDFPageText> &kept = m_pages[page].text;
    m_bytes += bytesOf(text) - (kept ? bytesOf(*kept) : 0);
    kept = text;
}

const QList<PDFLink> *PageContents::links(qint64 page) const
{
    const auto found = m_pages.find(page);
    return found != m_pages.end() && found->second.links ? &*found->second.links : nullptr;
}

void PageContents::setLinks(qint64 page, const QList<PDFLink> &links)
{
    std::optional<QList<PDFLink>> &kept = m_pages[page].links;
    m_bytes += bytesOf(links) - (kept ? bytesOf(*kept) : 0);
    kept = links;
}

std::optional<PDFLink> PageContents::linkAt(qint64 page, QPointF point) const
{
    const QList<PDFLink> *known = links(page);
    if (!known)
        return std::nullopt;
    for (auto link = known->rbegin(); link != known->rend(); ++link) {
        if (link->bounds.contains(point))
            return *link;
    }
    return std::nullopt;
}

void PageContents::forgetBeyond(PageRange visible)
{
    while (m_bytes > kPageTextBytes && m_pages.size() > 1) {
        const auto first = m_pages.begin();
        const auto last = std::prev(m_pages.end());
        const bool firstIsFarther = visible.first - first->first > last->first - visible.last;
        const auto farthest = firstIsFarther ? first : last;
        if (visible.contains(farthest->first))
            return;
        forget(farthest);
    }
}

void PageContents::forget(std::map<qint64, Content>::iterator page)
{
    if (page->second.text)
        m_bytes -= bytesOf(*page->second.text);
    if (page->second.links)
        m_bytes -= bytesOf(*page->second.links);
    m_pages.erase(page);
}
