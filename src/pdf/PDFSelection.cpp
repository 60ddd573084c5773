#include "pdf/PDFSelection.h"

#include <algorithm>

PDFSelection::PDFSelection(qint64 pageIndex, const PDFPageText &text, PDFTextRange range)
{
    const PDFTextRange inside = text.clamped(range);
    if (!inside.isEmpty())
        m_pages.insert(pageIndex, {text, {inside}});
}

void PDFSelection::PagePart::add(PDFTextRange range)
{
    range = text.clamped(range);
    if (range.isEmpty())
        return;
    QList<PDFTextRange> apart;
    for (const PDFTextRange &other : std::as_const(ranges)) {
        if (other.end < range.start || range.end < other.start)
            apart.append(other);
        else
            range = {std::min(range.start, other.start), std::max(range.end, other.end)};
    }
    const auto place = std::find_if(apart.begin(), apart.end(),
                                    [&](const PDFTextRange &o) { return o.start > range.start; });
    apart.insert(place, range);
    ranges = apart;
}

QString PDFSelection::PagePart::string() const
{
    QString out;
    qsizetype end = 0;
    for (const PDFTextRange &range : ranges) {
        if (!out.isEmpty())
            out += text.string({end, range.start}).contains(u'\n') ? u'\n' : u' ';
        out += text.string(range);
        end = range.end;
    }
    return out;
}

QString PDFSelection::string() const
{
    QString out;
    for (const PagePart &page : m_pages) {
        if (!out.isEmpty() && !out.endsWith(u'\n'))
            out += u'\n';
        out += page.string();
    }
    return out;
}

QRectF PDFSelection::bounds(qint64 pageIndex) const
{
    const PagePart page = m_pages.value(pageIndex);
    QRectF whole;
    for (const PDFTextRange &range : page.ranges)
        whole |= page.text.bounds(range);
    return whole;
}

QList<QRectF> PDFSelection::lineRectangles(qint64 pageIndex) const
{
    const PagePart page = m_pages.value(pageIndex);
    QList<QRectF> rectangles;
    for (const PDFTextRange &range : page.ranges)
        rectangles += page.text.lineRectangles(range);
    return rectangles;
}

void PDFSelection::add(const PDFSelection &other)
{
    for (auto page = other.m_pages.begin(); page != other.m_pages.end(); ++page) {
        PagePart &ours = m_pages[page.key()];
        if (ours.ranges.isEmpty())
            ours = *page;
        for (const PDFTextRange &range : page->ranges)
            ours.add(range);
    }
}
