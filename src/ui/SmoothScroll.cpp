#include "ui/SmoothScroll.h"

#include "ui/ReducedMotion.h"

#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>

namespace
{
/// Long enough to be seen, short enough to never lag behind the finger. Chosen.
constexpr int kGlideMs = 140;
/// Of QWheelEvent: a notch of an ordinary wheel.
constexpr double kNotch = 120;
} // namespace

SmoothScroll::SmoothScroll(QScrollBar *bar)
    : QObject(bar)
    , m_bar(bar)
    , m_glide(bar, "value", this)
{
    m_glide.setDuration(kGlideMs);
    m_glide.setEasingCurve(QEasingCurve::OutCubic);
}

void SmoothScroll::scroll(const QWheelEvent &event, int stepPx)
{
    if (!event.pixelDelta().isNull()) {
        stop();
        m_bar->setValue(m_bar->value() - event.pixelDelta().y());
        return;
    }
    const double wanted = m_rest - event.angleDelta().y() / kNotch * stepPx;
    const int way = int(wanted);
    m_rest = wanted - way;
    const int from =
        m_glide.state() == QAbstractAnimation::Running ? m_glide.endValue().toInt() : m_bar->value();
    const int target = std::clamp(from + way, m_bar->minimum(), m_bar->maximum());
    stop();
    if (prefersReducedMotion()) {
        m_bar->setValue(target);
        return;
    }
    m_glide.setEndValue(target);
    m_glide.start();
}
