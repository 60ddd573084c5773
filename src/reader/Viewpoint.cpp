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
    m_offset = {};
    refit();
    clamp();
}

void Viewpoint::setViewport(QSizeF size)
{
    const PDFPosition top = positionAt({m_viewport.width() / 2, 0});
    m_fittedPage = currentPage().value_or(0);
    m_viewport = size;
    refit();
    place(top, {size.width() / 2, 0});
}

void Viewpoint::learn(qint64 first, const std::vector<std::optional<QSizeF>> &sizes)
{
    const QPointF middleOfTop(m_viewport.width() / 2, 0);
    const PDFPosition top = positionAt(middleOfTop);
    const bool wasFitToAGuess = !m_layout.isKnown(m_fittedPage);
    m_layout.learn(first, sizes);
    if (wasFitToAGuess) {
        m_fittedPage = currentPage().value_or(0);
        refit();
    }
    place(top, middleOfTop);
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
    const QPointF middleOfTop(m_viewport.width() / 2, 0);
    const PDFPosition top = positionAt(middleOfTop);
    m_fit = fit;
    m_fittedPage = currentPage().value_or(0);
    refit();
    if (fit == Fit::Page)
        place({m_fittedPage, {}}, {pageRect(m_fittedPage).left(), PageLayout::kGap});
    else
        place(top, middleOfTop);
}

void Viewpoint::setScale(double scale, QPointF fixed)
{
    const PDFPosition kept = positionAt(fixed);
    m_fit = Fit::None;
    m_scale = std::clamp(scale, kLeastScale, kGreatestScale);
    place(kept, fixed);
}

QRectF Viewpoint::offsets() const
{
    const double width = m_layout.greatestWidth() * m_scale + 2 * kMargin;
    const double height = m_layout.height(m_scale);
    QRectF places(-width / 2, 0, width - m_viewport.width(), height - m_viewport.height());
    if (places.width() <= 0) // what is smaller than the viewport stands in its middle
        places = {-m_viewport.width() / 2, places.y(), 0, places.height()};
    if (places.height() <= 0)
        places = {places.x(), places.height() / 2, places.width(), 0};
    return places;
}

void Viewpoint::moveTo(QPointF offset)
{
    m_offset = offset;
    clamp();
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
    const qint64 page = std::clamp<qint64>(position.pageIndex, 0, m_layout.pageCount() - 1);
    moveTo(m_offset + pageTransform(page).map(position.point) - where);
}

void Viewpoint::jump(const PDFPosition &position, QPointF where)
{
    m_fittedPage = std::clamp<qint64>(position.pageIndex, 0, std::max<qint64>(m_layout.pageCount() - 1, 0));
    refit();
    place(position, where);
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

void Viewpoint::clamp()
{
    const QRectF places = offsets();
    m_offset.setX(std::clamp(m_offset.x(), places.left(), places.right()));
    m_offset.setY(std::clamp(m_offset.y(), places.top(), places.bottom()));
}
