#include "reader/PageLayout.h"

#include <algorithm>

namespace
{
/// Until any size is known, and where none can be had: US letter.
constexpr QSizeF kUnknownSize(612, 792);
} // namespace

PageLayout::PageLayout(qint64 pageCount)
    : m_pageCount(pageCount)
{
}

bool PageLayout::isKnown(qint64 page) const
{
    const Block *block = blockOf(page);
    return block && block->isKnown[size_t(page % kBlockPages)];
}

void PageLayout::learn(qint64 first, const std::vector<std::optional<QSizeF>> &sizes)
{
    for (size_t i = 0; i < sizes.size(); ++i) {
        const qint64 page = first + qint64(i);
        if (page < 0 || page >= m_pageCount)
            continue;
        if (sizes[i] && !m_assumedSize)
            m_assumedSize = sizes[i];
        Block &block = m_blocks[page / kBlockPages];
        block.sizes.resize(kBlockPages);
        block.isKnown.resize(kBlockPages);
        block.sizes[size_t(page % kBlockPages)] = sizes[i];
        block.isKnown[size_t(page % kBlockPages)] = true;
    }
    sumUp();
}

void PageLayout::setTurns(int turns)
{
    m_turns = ((turns % 4) + 4) % 4;
    sumUp();
}

QSizeF PageLayout::unturnedSize(qint64 page) const
{
    const QSizeF assumed = m_assumedSize.value_or(kUnknownSize);
    const Block *block = blockOf(page);
    return block ? block->sizes[size_t(page % kBlockPages)].value_or(assumed) : assumed;
}

QSizeF PageLayout::size(qint64 page) const
{
    return turned(unturnedSize(page));
}

QRectF PageLayout::rect(qint64 page, double scale) const
{
    const QSizeF shown = size(page) * scale;
    return {QPointF(-shown.width() / 2, top(page, scale)), shown};
}

double PageLayout::height(double scale) const
{
    return top(m_pageCount, scale);
}

qint64 PageLayout::pageAt(double y, double scale) const
{
    qint64 first = 0;
    qint64 last = m_pageCount - 1;
    while (first < last) {
        const qint64 middle = first + (last - first + 1) / 2;
        if (top(middle, scale) <= y)
            first = middle;
        else
            last = middle - 1;
    }
    return first;
}

PageRange PageLayout::pagesBetween(double topEdge, double bottomEdge, double scale) const
{
    if (m_pageCount == 0 || bottomEdge <= topEdge)
        return {};
    PageRange range = {pageAt(topEdge, scale), pageAt(bottomEdge, scale)};
    if (rect(range.first, scale).bottom() <= topEdge)
        ++range.first;
    if (top(range.last, scale) >= bottomEdge)
        --range.last;
    return range;
}

QSizeF PageLayout::turned(QSizeF size) const
{
    return m_turns % 2 == 0 ? size : size.transposed();
}

double PageLayout::top(qint64 page, double scale) const
{
    const double assumed = turned(m_assumedSize.value_or(kUnknownSize)).height();
    return kGap * double(page + 1) + scale * (assumed * double(page) + extraAbove(page));
}

double PageLayout::extraAbove(qint64 page) const
{
    const auto above = m_blocks.upper_bound(page / kBlockPages);
    if (above == m_blocks.begin())
        return 0;
    const auto &[number, block] = *std::prev(above);
    const qint64 pagesInside = number == page / kBlockPages ? page % kBlockPages : kBlockPages;
    return block.blocksExtraBefore + block.extraBefore[size_t(pagesInside)];
}

const PageLayout::Block *PageLayout::blockOf(qint64 page) const
{
    const auto found = m_blocks.find(page / kBlockPages);
    return found == m_blocks.end() ? nullptr : &found->second;
}

void PageLayout::sumUp()
{
    const QSizeF assumed = turned(m_assumedSize.value_or(kUnknownSize));
    double blocksExtra = 0;
    m_greatestWidth = assumed.width();
    for (auto &[number, block] : m_blocks) {
        block.blocksExtraBefore = blocksExtra;
        block.extraBefore.assign(1, 0);
        for (const std::optional<QSizeF> &known : block.sizes) {
            const QSizeF shown = known ? turned(*known) : assumed;
            m_greatestWidth = std::max(m_greatestWidth, shown.width());
            block.extraBefore.push_back(block.extraBefore.back() + shown.height() - assumed.height());
        }
        blocksExtra += block.extraBefore.back();
    }
}
