#include "reader/Viewpoint.h"

#include <algorithm>

namespace
{
/// Beside a page that fits the width.
constexpr double kMargin = PageLayout::kGap;
/// No viewport is too narrow to show something.
constexpr double kLeastFittedSide = 16;

double area(const QRectF &rect)
{
    return rect.width() * rect.height();
}
} // namespace

void Viewpoint::reset(qint64 pageCount)
{
    const int turns = m_layout.turns();
    m_layout = PageLayout(pageCount);
    m_layout.setTurns(turns);
    m_fittedPage = 0;
    refit();
    moveTo({-m_viewport.width() / 2, 0});
}

void Viewpoint::setViewport(QSizeF size)
{
    const Anchor kept = topOf(visiblePages().first);
    if (m_fit == Fit::Page || size.width() != m_viewport.width())
        m_fittedPage = currentPage().value_or(0);
    m_viewport = size;
    refit();
    restore(kept);
}

void Viewpoint::learn(qint64 first, const std::vector<std::optional<QSizeF>> &sizes)
{
    const qint64 page = currentPage().value_or(0);
    const Anchor kept = topOf(page);
    const bool wasFitToAGuess = !m_layout.isKnown(m_fittedPage);
    m_layout.learn(first, sizes);
    if (wasFitToAGuess) {
        m_fittedPage = page;
        refit();
    }
    restore(kept);
}

void Viewpoint::setTurns(int turns)
{
    const QPointF middle(m_viewport.width() / 2, m_viewport.height() / 2);
    const PDFPosition kept = positionAt(middle);
    m_layout.setTurns(turns);
    refit();
    place(kept, middle);
}

void Viewpoint::setFit(Fit fit)
{
    const Anchor kept = topOf(visiblePages().first);
    m_fit = fit;
    m_fittedPage = currentPage().value_or(0);
    refit();
    if (fit == Fit::Page)
        jumpToPage(m_fittedPage);
    else
        restore(kept);
}

void Viewpoint::setScale(double scale, QPointF fixed)
{
    const PDFPosition kept = positionAt(fixed);
    m_fit = Fit::None;
    m_scale = std::clamp(scale, kLeastScale, kGreatestScale);
    place(kept, fixed);
}

QRectF Viewpoint::offsetsAt(double y) const
{
    const PageRange visible = m_layout.pagesBetween(y, y + m_viewport.height(), m_scale);
    double width = 0;
    for (qint64 page = visible.first; page <= visible.last; ++page)
        width = std::max(width, m_layout.size(page).width() * m_scale + 2 * kMargin);
    const double height = m_layout.height(m_scale);
    QRectF places(-width / 2, 0, width - m_viewport.width(), height - m_viewport.height());
    if (places.width() <= 0) // what is smaller than the viewport stands in its middle
        places = {-m_viewport.width() / 2, places.y(), 0, places.height()};
    if (places.height() <= 0)
        places = {places.x(), places.height() / 2, places.width(), 0};
    return places;
}

QPointF Viewpoint::clamped(QPointF offset) const
{
    const QRectF upright = offsets(); // how high the flow is does not depend on the place
    const double y = std::clamp(offset.y(), upright.top(), upright.bottom());
    const QRectF places = offsetsAt(y);
    return {std::clamp(offset.x(), places.left(), places.right()), y};
}

bool Viewpoint::isWiderThanViewport() const
{
    return m_fit == Fit::None && m_layout.greatestWidth() * m_scale + 2 * kMargin > m_viewport.width();
}

PDFPosition Viewpoint::positionAt(QPointF where) const
{
    if (m_layout.pageCount() == 0)
        return {};
    const qint64 page = m_layout.pageAt(m_offset.y() + where.y(), m_scale);
    return {page, pageTransform(page).inverted().map(where)};
}

void Viewpoint::place(const PDFPosition &position, QPointF where)
{
    if (m_layout.pageCount() == 0)
        return;
    moveTo(m_offset + pageTransform(nearestPage(position.pageIndex)).map(position.point) - where);
}

void Viewpoint::jump(const PDFPosition &position, QPointF where)
{
    m_fittedPage = nearestPage(position.pageIndex);
    refit();
    place(position, where);
}

void Viewpoint::jumpToPage(qint64 page)
{
    m_fittedPage = nearestPage(page);
    refit();
    moveTo({m_offset.x(), m_layout.rect(m_fittedPage, m_scale).top() - PageLayout::kGap});
}

PageRange Viewpoint::visiblePages() const
{
    return m_layout.pagesBetween(m_offset.y(), m_offset.y() + m_viewport.height(), m_scale);
}

PageRange Viewpoint::pagesAround() const
{
    return m_layout.pagesBetween(m_offset.y() - m_viewport.height(), m_offset.y() + 2 * m_viewport.height(),
                                 m_scale);
}

std::optional<qint64> Viewpoint::currentPage() const
{
    if (m_layout.pageCount() == 0)
        return std::nullopt;
    const PageRange visible = visiblePages();
    const QRectF frame(QPointF(), m_viewport);
    qint64 largest = m_layout.pageAt(m_offset.y(), m_scale);
    double largestPart = 0;
    for (qint64 page = visible.first; page <= visible.last; ++page) {
        const double part = area(pageRect(page).intersected(frame));
        if (part > largestPart) {
            largestPart = part;
            largest = page;
        }
    }
    return largest;
}

QRectF Viewpoint::pageRect(qint64 page) const
{
    return m_layout.rect(page, m_scale).translated(-m_offset);
}

QTransform Viewpoint::pageTransform(qint64 page) const
{
    const QRectF shown = pageRect(page);
    const QSizeF unturned = m_layout.unturnedSize(page) * m_scale;
    QTransform transform;
    transform.translate(shown.center().x(), shown.center().y());
    transform.rotate(90.0 * m_layout.turns());
    transform.translate(-unturned.width() / 2, -unturned.height() / 2);
    transform.scale(m_scale, m_scale);
    return transform;
}

Viewpoint::Anchor Viewpoint::topOf(qint64 page) const
{
    const QPointF top(m_viewport.width() / 2, std::max(pageRect(page).top(), 0.0));
    return {{page, pageTransform(page).inverted().map(top)}, top.y()};
}

void Viewpoint::restore(const Anchor &anchor)
{
    place(anchor.position, {m_viewport.width() / 2, anchor.y});
}

qint64 Viewpoint::nearestPage(qint64 page) const
{
    return std::clamp<qint64>(page, 0, std::max<qint64>(m_layout.pageCount() - 1, 0));
}

void Viewpoint::refit()
{
    if (m_fit == Fit::None || m_layout.pageCount() == 0 || m_viewport.isEmpty())
        return;
    const QSizeF page = m_layout.size(m_fittedPage);
    const double width = std::max(kLeastFittedSide, m_viewport.width() - 2 * kMargin);
    const double height = std::max(kLeastFittedSide, m_viewport.height() - 2 * PageLayout::kGap);
    m_scale = width / page.width();
    if (m_fit == Fit::Page)
        m_scale = std::min(m_scale, height / page.height());
}
