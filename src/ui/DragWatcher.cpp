#include "ui/DragWatcher.h"

#include <QDropEvent>
#include <QWidget>
#include <QWindow>

DragWatcher::DragWatcher(QWidget *window)
    : QObject(window)
    , m_window(window)
{
}

// Widgets hear of a drag one by one and only those that take drops; the native window hears of it first.
void DragWatcher::start()
{
    m_window->windowHandle()->installEventFilter(this);
}

bool DragWatcher::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::DragEnter:
        Q_EMIT entered(static_cast<QDragEnterEvent *>(event)->mimeData());
        break;
    case QEvent::DragLeave:
        Q_EMIT ended();
        break;
    case QEvent::Drop:
        // After the drop has reached the widget that it is for.
        QMetaObject::invokeMethod(this, &DragWatcher::ended, Qt::QueuedConnection);
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}
