#include "reader/HitMarkStrip.h"
#include "reader/PDFKitView.h"
#include "reader/PointerGestures.h"
#include "reader/SelectionCopier.h"
#include "reader/ZoomSteps.h"

namespace
{
/// Two places nearer than this, in pixels, are the same one.
constexpr double kSamePlace = 1;
/// Where a passage comes to stand: below so much of the viewport's height, behind so much of its width.
constexpr double kShareAbove = 0.3;
constexpr double kShareBefore = 0.1;
} // namespace

std::optional<qint64> PDFKitView::currentPageIndex() const
{
    if (m_jumpedTo && m_viewpoint.visiblePages().contains(*m_jumpedTo))
        return m_jumpedTo;
    return m_viewpoint.currentPage();
}

PDFPosition PDFKitView::place() const
{
    return m_viewpoint.positionAt({});
}

template <typename Move> void PDFKitView::jump(Move move)
{
    const PDFPosition left = place();
    m_glide.stop();
    m_jumpedTo.reset();
    move();
    const PDFPosition now = place();
    const double distance = (now.point - left.point).manhattanLength() * m_viewpoint.scale();
    if (now.pageIndex != left.pageIndex || distance >= kSamePlace)
        m_history.leave(left);
    tellHistory();
    viewpointChanged();
}

void PDFKitView::goToPage(qint64 pageIndex)
{
    if (pageIndex < 0 || pageIndex >= m_viewpoint.layout().pageCount())
        return;
    jump([this, pageIndex] {
        m_viewpoint.jumpToPage(pageIndex);
        m_jumpedTo = pageIndex;
    });
}

void PDFKitView::goToPosition(const PDFPosition &position)
{
    jump([this, position] { m_viewpoint.jump(position, {}); });
}

void PDFKitView::goToSelection(const PDFSelection &selection)
{
    if (selection.isEmpty())
        return;
    const qint64 page = selection.pages().first();
    const QRectF line = selection.lineRectangles(page).value(0);
    const QRectF frame(QPointF(), m_viewpoint.viewport());
    const auto shown = [&] {
        return m_viewpoint.pageTransform(page).mapRect(line);
    };
    if (frame.contains(shown())) {
        m_jumpedTo = page; // where one looks now, however little of that page shows
        tellChanges();
        return;
    }
    jump([&] {
        m_viewpoint.jumpToPage(page);
        const QRectF there = shown();
        const bool isBeside = there.left() < frame.left() || there.right() > frame.right();
        m_viewpoint.moveTo(m_viewpoint.offset() +
                           QPointF(isBeside ? there.left() - kShareBefore * frame.width() : 0,
                                   there.top() - kShareAbove * frame.height()));
        m_jumpedTo = page;
    });
}

void PDFKitView::goBack()
{
    if (canGoBack())
        goInHistory(m_history.goBack(place()));
}

void PDFKitView::goForward()
{
    if (canGoForward())
        goInHistory(m_history.goForward(place()));
}

void PDFKitView::forgetHistory()
{
    m_history.clear();
    tellHistory();
}

void PDFKitView::goInHistory(const PDFPosition &position)
{
    m_glide.stop();
    m_jumpedTo.reset();
    m_viewpoint.jump(position, {});
    tellHistory();
    viewpointChanged();
}

void PDFKitView::tellHistory()
{
    if (historyChanged)
        historyChanged();
}

double PDFKitView::actualScale() const
{
    return logicalDpiX() / 72.0;
}

double PDFKitView::zoom() const
{
    return m_viewpoint.scale() / actualScale();
}

void PDFKitView::setScale(double scale, QPointF fixed)
{
    m_glide.stop();
    m_viewpoint.setScale(scale, fixed);
    viewpointChanged();
}

void PDFKitView::zoomBy(double factor, QPointF fixed)
{
    setScale(m_viewpoint.scale() * factor, fixed);
}

void PDFKitView::zoomIn()
{
    setScale(nextLargerScale(zoom()) * actualScale(), QRectF(viewport()->rect()).center());
}

void PDFKitView::zoomOut()
{
    setScale(nextSmallerScale(zoom()) * actualScale(), QRectF(viewport()->rect()).center());
}

void PDFKitView::zoomToActualSize()
{
    setScale(actualScale(), QRectF(viewport()->rect()).center());
}

void PDFKitView::scaleAutomatically()
{
    m_glide.stop();
    m_viewpoint.setFit(Viewpoint::Fit::Width);
    viewpointChanged();
}

void PDFKitView::scaleToPage()
{
    m_glide.stop();
    m_viewpoint.setFit(Viewpoint::Fit::Page);
    viewpointChanged();
}

void PDFKitView::rotatePages(Turn turn)
{
    m_glide.stop();
    m_viewpoint.setTurns(m_viewpoint.layout().turns() + (turn == Turn::Right ? 1 : -1));
    viewpointChanged();
}

void PDFKitView::setDarkMode(bool isDark)
{
    m_isDark = isDark;
    viewport()->update();
    fetch();
}

void PDFKitView::scrollBy(QPointF delta, Motion motion)
{
    m_jumpedTo.reset();
    const QPointF from = m_viewpoint.offset();
    const QPointF to = m_viewpoint.clamped((m_glide.isMoving() ? m_glide.target() : from) + delta);
    if (motion == Motion::Smooth && !prefersStillness()) {
        m_glide.start(from, to, m_clock.elapsed());
        return scheduleFrame();
    }
    m_glide.stop();
    m_viewpoint.moveTo(to);
    viewpointChanged();
}
