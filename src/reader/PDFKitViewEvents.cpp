#include "reader/PDFKitView.h"

#include "reader/HitMarkStrip.h"
#include "reader/PagePainter.h"
#include "reader/PointerGestures.h"
#include "reader/SelectionCopier.h"
#include "reader/Spring.h"

#include <QApplication>
#include <QGestureEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QNativeGestureEvent>
#include <QPainter>
#include <QPinchGesture>
#include <QScrollBar>
#include <QTimer>
#include <QToolTip>
#include <QWheelEvent>
#include <cmath>

namespace
{
constexpr std::chrono::milliseconds kFrame{8};
/// Of an arrow key, and of a line of the mouse wheel.
constexpr double kLineHeight = 60;
constexpr double kWheelLineHeight = 26;
/// What a page key leaves on the screen of what was read last.
constexpr double kKeptOfPage = 40;
/// Notches of a wheel that double the scale.
constexpr double kNotchesPerOctave = 4;
constexpr double kAngleOfNotch = 120;
/// How quick the light comes on, and when that may end.
constexpr std::chrono::duration<double> kLightResponse{0.35};
constexpr std::chrono::milliseconds kLightSettles{600};

/// Where a key scrolls: steps of a line, parts of a viewport, or the ends.
std::optional<QPointF> scrollOf(const QKeyEvent &key, QSizeF viewport)
{
    const double page = std::max(kLineHeight, viewport.height() - kKeptOfPage);
    const bool isBackwards = key.modifiers() & Qt::ShiftModifier;
    constexpr double kFar = 1e15;
    switch (key.key()) {
    case Qt::Key_Space:
        return QPointF(0, isBackwards ? -page : page);
    case Qt::Key_PageDown:
        return QPointF(0, page);
    case Qt::Key_PageUp:
        return QPointF(0, -page);
    case Qt::Key_Home:
        return QPointF(0, -kFar);
    case Qt::Key_End:
        return QPointF(0, kFar);
    case Qt::Key_Down:
    case Qt::Key_J:
        return QPointF(0, kLineHeight);
    case Qt::Key_Up:
    case Qt::Key_K:
        return QPointF(0, -kLineHeight);
    case Qt::Key_Left:
        return QPointF(-kLineHeight, 0);
    case Qt::Key_Right:
        return QPointF(kLineHeight, 0);
    default:
        return std::nullopt;
    }
}
} // namespace

void PDFKitView::paintEvent(QPaintEvent *)
{
    if (devicePixelRatioF() != m_fetchedPixelRatio) // the window came to another screen
        fetch();
    m_stock.take(PageJob::Kind::Picture);
    QPainter painter(viewport());
    PagePainter pages(painter, m_viewpoint, m_stock, devicePixelRatioF());
    const PageColors colors = PageColors::from(palette(), m_isDark);
    pages.paintBackdrop(colors);
    if (!m_viewpoint.layout().hasSizes())
        return;
    const PageRange visible = m_viewpoint.visiblePages();
    for (qint64 page = visible.first; page <= visible.last; ++page) {
        pages.paintPage(page, colors);
        const QColor mark = m_selector.isGiven() ? colors.faded(colors.lit, litStrength()) : colors.selection;
        pages.paintMarks(page, m_selector.rectanglesOn(page), mark, m_isDark);
    }
    if (!m_wasShown && isSharp()) {
        m_wasShown = true;
        QTimer::singleShot(0, this, &PDFKitView::firstShown);
    }
}

double PDFKitView::litStrength() const
{
    if (!m_litSince)
        return 1;
    return springProgress(m_clock.elapsed() - *m_litSince, kLightResponse);
}

void PDFKitView::scheduleFrame()
{
    if (!m_nextFrame)
        m_nextFrame = m_clock.callAfter(kFrame, [this] { advanceFrame(); });
}

void PDFKitView::advanceFrame()
{
    m_nextFrame.reset();
    if (m_glide.isMoving()) {
        m_viewpoint.moveTo(m_glide.advance(m_clock.elapsed()));
        viewpointChanged();
    }
    if (m_litSince && m_clock.elapsed() - *m_litSince >= kLightSettles)
        m_litSince.reset();
    viewport()->update();
    if (m_glide.isMoving() || m_litSince)
        scheduleFrame();
}

bool PDFKitView::event(QEvent *event)
{
    if (event->type() == QEvent::Show) {
        m_stock.take(PageJob::Kind::Sizes); // so that pictures are asked for before the window is painted
        fetch();
    }
    return QAbstractScrollArea::event(event);
}

bool PDFKitView::viewportEvent(QEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        return m_gestures->press(*static_cast<QMouseEvent *>(event));
    case QEvent::MouseButtonDblClick:
        return m_gestures->doublePress(*static_cast<QMouseEvent *>(event));
    case QEvent::MouseMove:
        return m_gestures->move(*static_cast<QMouseEvent *>(event));
    case QEvent::MouseButtonRelease:
        return m_gestures->release(*static_cast<QMouseEvent *>(event));
    case QEvent::NativeGesture:
    case QEvent::Gesture:
        return zoomByPinch(event);
    case QEvent::ToolTip:
        showAddress(*static_cast<QHelpEvent *>(event));
        return true;
    default:
        return QAbstractScrollArea::viewportEvent(event);
    }
}

bool PDFKitView::zoomByPinch(QEvent *event)
{
    if (event->type() == QEvent::NativeGesture) {
        const auto *gesture = static_cast<QNativeGestureEvent *>(event);
        if (gesture->gestureType() != Qt::ZoomNativeGesture)
            return false;
        zoomBy(1 + gesture->value(), gesture->position());
        return true;
    }
    const auto *pinch =
        static_cast<QPinchGesture *>(static_cast<QGestureEvent *>(event)->gesture(Qt::PinchGesture));
    if (!pinch)
        return false;
    zoomBy(pinch->scaleFactor(), viewport()->mapFromGlobal(pinch->centerPoint().toPoint()));
    return true;
}

void PDFKitView::showAddress(const QHelpEvent &event)
{
    const PDFPosition at = m_viewpoint.positionAt(event.pos());
    const std::optional<PDFLink> link = contents().linkAt(at.pageIndex, at.point);
    const QUrl *address = link ? std::get_if<QUrl>(&link->target) : nullptr;
    QToolTip::showText(event.globalPos(), address ? address->toString() : QString(), viewport());
}

void PDFKitView::resizeEvent(QResizeEvent *)
{
    layOutHitMarks();
    m_glide.stop();
    m_viewpoint.setViewport(viewport()->size());
    viewpointChanged();
}

void PDFKitView::changeEvent(QEvent *event)
{
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        viewport()->update();
}

void PDFKitView::scrollContentsBy(int, int)
{
    if (m_isSettingScrollBars)
        return;
    m_glide.stop();
    m_jumpedTo.reset();
    m_viewpoint.moveTo(m_viewpoint.offsets().topLeft() +
                       QPointF(horizontalScrollBar()->value(), verticalScrollBar()->value() * m_scrollUnit));
    viewpointChanged();
}

void PDFKitView::wheelEvent(QWheelEvent *event)
{
    event->accept();
    if (event->modifiers() & Qt::ControlModifier) {
        zoomBy(std::exp2(event->angleDelta().y() / kAngleOfNotch / kNotchesPerOctave), event->position());
        return;
    }
    QPointF delta = event->pixelDelta();
    const bool isTouchpad = !delta.isNull();
    if (!isTouchpad)
        delta = QPointF(event->angleDelta()) / kAngleOfNotch * QApplication::wheelScrollLines() *
                kWheelLineHeight;
    if (event->modifiers() & Qt::ShiftModifier)
        delta = delta.transposed();
    scrollBy(-delta, isTouchpad ? Motion::Instant : Motion::Smooth);
}

void PDFKitView::keyPressEvent(QKeyEvent *event)
{
    const std::optional<QPointF> scroll = scrollOf(*event, m_viewpoint.viewport());
    constexpr auto kOtherModifiers = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
    if (!scroll || event->modifiers() & kOtherModifiers)
        return event->ignore();
    scrollBy(*scroll, Motion::Smooth);
}
