#include "reader/TextSelector.h"

#include <algorithm>

TextSelector::TextSelector(const PageContents &contents)
    : m_contents(contents)
{
}

void TextSelector::clear()
{
    m_span.reset();
    m_given.reset();
}

void TextSelector::start(const Place &place, PDFTextUnit unit)
{
    m_given.reset();
    const End end = {place.page, place.point};
    m_span = Span{end, end, unit};
}

void TextSelector::extend(const Place &place)
{
    if (m_given) {
        const qint64 page = m_given->pages().first();
        start({page, m_given->lineRectangles(page).value(0).topLeft()}, PDFTextUnit::Character);
    }
    if (!m_span)
        start(place, PDFTextUnit::Character);
    m_span->loose = {place.page, place.point};
}

void TextSelector::selectAll(qint64 pageCount)
{
    clear();
    if (pageCount > 0)
        m_span = Span{{0, std::nullopt}, {pageCount - 1, std::nullopt}, PDFTextUnit::Character};
}

void TextSelector::set(const PDFSelection &selection)
{
    clear();
    if (!selection.isEmpty())
        m_given = selection;
}

PageRange TextSelector::pages() const
{
    if (m_given)
        return {m_given->pages().first(), m_given->pages().last()};
    if (!m_span)
        return {};
    const auto [first, last] = std::minmax(m_span->anchor.page, m_span->loose.page);
    return {first, last};
}

PDFTextRange TextSelector::rangeOn(qint64 page, const PDFPageText &text) const
{
    return m_span && pages().contains(page) ? rangeIn(*m_span, page, text) : PDFTextRange();
}

QList<QRectF> TextSelector::rectanglesOn(qint64 page) const
{
    if (m_given)
        return m_given->lineRectangles(page);
    const PDFPageText *text = m_contents.text(page);
    return text ? text->lineRectangles(rangeOn(page, *text)) : QList<QRectF>();
}

std::optional<PDFSelection> TextSelector::selection() const
{
    if (m_given)
        return m_given;
    PDFSelection selected;
    for (const qint64 page : m_contents.pagesWithText(pages())) {
        const PDFPageText &text = *m_contents.text(page);
        selected.add(PDFSelection(page, text, rangeOn(page, text)));
    }
    return selected.isEmpty() ? std::nullopt : std::optional(selected);
}

PDFTextRange TextSelector::rangeIn(const Span &span, qint64 page, const PDFPageText &text)
{
    PDFTextRange range = {0, text.string().size()};
    const auto &[anchor, loose, unit] = span;
    if (anchor.page == loose.page && anchor.point && loose.point)
        return text.rangeBetween(*anchor.point, *loose.point, unit);
    const End &upper = anchor.page < loose.page ? anchor : loose;
    const End &lower = anchor.page < loose.page ? loose : anchor;
    if (page == upper.page && upper.point)
        range.start = text.rangeBetween(*upper.point, *upper.point, unit).start;
    if (page == lower.page && lower.point)
        range.end = text.rangeBetween(*lower.point, *lower.point, unit).end;
    return range;
}
