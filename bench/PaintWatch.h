#pragma once

#include "reader/PDFKitView.h"

#include <QCoreApplication>
#include <QEvent>
#include <functional>

/// An event filter of the application that tells of every painting of a reader's pages, when it is done.
class PaintWatch : public QObject
{
public:
    std::function<void(PDFKitView &view)> painted = [](PDFKitView &) {
    };

    bool eventFilter(QObject *object, QEvent *event) override
    {
        if (m_isInside || event->type() != QEvent::Paint)
            return false;
        auto *view = qobject_cast<PDFKitView *>(object->parent());
        if (!view)
            return false;
        m_isInside = true;
        QCoreApplication::sendEvent(object, event);
        m_isInside = false;
        painted(*view);
        return true;
    }

private:
    bool m_isInside = false;
};
