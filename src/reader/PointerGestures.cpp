#include "reader/PointerGestures.h"

#include "reader/PDFKitView.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QStyleHints>
#include <algorithm>

namespace
{
constexpr std::chrono::milliseconds kEdgeScrollInterval{16};
/// Of the pointer's distance beyond the edge, an interval.
constexpr double kEdgeScrollShare = 0.25;

bool isNear(QPointF a, QPointF b)
{
    return (a - b).manhattanLength() < QGuiApplication::styleHints()->startDragDistance();
}
} // namespace

PointerGestures::PointerGestures(PDFKitView &view)
    : m_view(view)
{
}

bool PointerGestures::press(const QMouseEvent &event)
{
    m_pressedAt = m_last = event.position();
    switch (event.button()) {
    case Qt::LeftButton:
        pressLeft(event);
        return true;
    case Qt::MiddleButton:
        m_drag = Drag::Pan;
        updateCursor();
        return true;
    case Qt::BackButton:
        m_view.goBack();
        return true;
    case Qt::ForwardButton:
        m_view.goForward();
        return true;
    default:
        return false;
    }
}

void PointerGestures::pressLeft(const QMouseEvent &event)
{
    m_pressedLink.reset();
    const TextSelector::Place place = placeAt(event.position());
    if (isTriplePress(event)) {
        m_drag = Drag::Select;
        m_view.startSelection(place, PDFTextUnit::Line);
    } else if (event.modifiers() & Qt::ShiftModifier) {
        m_drag = Drag::Select;
        m_view.extendSelection(place);
    } else {
        m_drag = Drag::Pressed;
        m_pressedLink = linkAt(event.position());
        m_view.startSelection(place, PDFTextUnit::Character);
    }
    m_doublePressedTime.reset();
}

bool PointerGestures::doublePress(const QMouseEvent &event)
{
    if (event.button() != Qt::LeftButton)
        return press(event);
    m_drag = Drag::Select;
    m_doublePressedAt = m_last = event.position();
    m_doublePressedTime = event.timestamp();
    m_view.startSelection(placeAt(event.position()), PDFTextUnit::Word);
    return true;
}

bool PointerGestures::move(const QMouseEvent &event)
{
    if (m_drag == Drag::Pressed && !isNear(event.position(), m_pressedAt))
        m_drag = Drag::Select;
    if (m_drag == Drag::Pan)
        pan(event.position());
    else if (m_drag == Drag::Select)
        select(event.position());
    m_last = event.position();
    if (m_drag == Drag::None)
        updateCursor();
    return true;
}

bool PointerGestures::release(const QMouseEvent &event)
{
    const bool isClick = m_drag == Drag::Pressed && event.button() == Qt::LeftButton;
    const std::optional<PDFLink> link = std::exchange(m_pressedLink, std::nullopt);
    const Drag drag = std::exchange(m_drag, Drag::None);
    m_edgeScroll.reset();
    if (drag == Drag::Select)
        m_view.offerSelection();
    if (isClick && link)
        m_view.followLink(*link);
    updateCursor();
    return event.button() != Qt::RightButton;
}

void PointerGestures::updateCursor()
{
    QWidget *viewport = m_view.viewport();
    if (m_drag == Drag::Pan)
        viewport->setCursor(Qt::ClosedHandCursor);
    else if (m_drag == Drag::Select)
        viewport->setCursor(Qt::IBeamCursor);
    else if (linkAt(m_last))
        viewport->setCursor(Qt::PointingHandCursor);
    else if (isOverText(m_last))
        viewport->setCursor(Qt::IBeamCursor);
    else
        viewport->setCursor(Qt::ArrowCursor);
}

TextSelector::Place PointerGestures::placeAt(QPointF where) const
{
    const PDFPosition position = m_view.viewpoint().positionAt(where);
    return {position.pageIndex, position.point};
}

std::optional<PDFLink> PointerGestures::linkAt(QPointF where) const
{
    const TextSelector::Place place = placeAt(where);
    return m_view.contents().linkAt(place.page, place.point);
}

bool PointerGestures::isOverText(QPointF where) const
{
    const TextSelector::Place place = placeAt(where);
    const PDFPageText *text = m_view.contents().text(place.page);
    return text && text->characterAt(place.point);
}

bool PointerGestures::isTriplePress(const QMouseEvent &event) const
{
    const auto interval = quint64(QGuiApplication::styleHints()->mouseDoubleClickInterval());
    return m_doublePressedTime && event.timestamp() - *m_doublePressedTime < interval &&
           isNear(event.position(), m_doublePressedAt);
}

void PointerGestures::pan(QPointF to)
{
    m_view.scrollBy(m_last - to, PDFKitView::Motion::Instant);
}

void PointerGestures::select(QPointF to)
{
    m_view.extendSelection(placeAt(to));
    if (m_view.viewport()->rect().contains(to.toPoint()))
        m_edgeScroll.reset();
    else if (!m_edgeScroll)
        m_edgeScroll = m_view.clock().callAfter(kEdgeScrollInterval, [this] { scrollAtEdge(); });
}

void PointerGestures::scrollAtEdge()
{
    const QRectF frame = m_view.viewport()->rect();
    const QPointF inside(std::clamp(m_last.x(), frame.left(), frame.right()),
                         std::clamp(m_last.y(), frame.top(), frame.bottom()));
    m_edgeScroll.reset();
    m_view.scrollBy((m_last - inside) * kEdgeScrollShare, PDFKitView::Motion::Instant);
    select(m_last);
}
