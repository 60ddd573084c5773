#pragma once

#include <QPropertyAnimation>

class QScrollBar;
class QWheelEvent;

/// Turns the steps of a mouse wheel into gliding. Fingers on a touchpad are followed as they move. Main
/// thread.
class SmoothScroll : public QObject
{
public:
    explicit SmoothScroll(QScrollBar *bar);

    /// `stepPx` is how far one notch of a wheel goes.
    void scroll(const QWheelEvent &event, int stepPx);
    /// Ends a glide where it is, because something else moves the bar.
    void stop() { m_glide.stop(); }

private:
    QScrollBar *m_bar;
    QPropertyAnimation m_glide;
    double m_rest = 0; ///< of fine wheels: what is less than a pixel
};
