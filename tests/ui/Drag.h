#pragma once

#include <QApplication>
#include <QDropEvent>
#include <QMimeData>
#include <QWidget>
#include <QWindow>
#include <memory>

/// Something dragged over a window, as the desktop tells the window about it.
class Drag
{
public:
    /// Enters the window in its middle.
    Drag(QWidget &window, std::unique_ptr<QMimeData> content)
        : m_window(window)
        , m_content(std::move(content))
        , m_position(window.rect().center())
    {
        QDragEnterEvent enter(m_position, Qt::CopyAction, m_content.get(), Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(m_window.windowHandle(), &enter);
        m_isTaken = enter.isAccepted();
    }

    /// Whether the place takes the drop.
    bool moveTo(const QWidget *widget, QPoint place)
    {
        m_position = widget->mapTo(&m_window, place);
        QDragMoveEvent move(m_position, Qt::CopyAction, m_content.get(), Qt::LeftButton, Qt::NoModifier);
        move.setAccepted(m_isTaken); // each move begins with what was answered last
        QCoreApplication::sendEvent(m_window.windowHandle(), &move);
        m_isTaken = move.isAccepted();
        return m_isTaken;
    }
    bool moveTo(const QWidget *widget) { return moveTo(widget, widget->rect().center()); }

    void drop()
    {
        QDropEvent drop(m_position, Qt::CopyAction, m_content.get(), Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(m_window.windowHandle(), &drop);
        QCoreApplication::processEvents(); // the window tidies up behind the drop
    }

    void leave()
    {
        QDragLeaveEvent leave;
        QCoreApplication::sendEvent(m_window.windowHandle(), &leave);
    }

private:
    QWidget &m_window;
    std::unique_ptr<QMimeData> m_content;
    QPoint m_position;
    bool m_isTaken = false;
};
