#pragma once

#include <QMimeData>
#include <QObject>

class QWidget;

/// Tells what is dragged over a window, wherever in it the pointer is.
class DragWatcher : public QObject
{
    Q_OBJECT

public:
    explicit DragWatcher(QWidget *window);

    void start(); ///< once the window has its native window

Q_SIGNALS:
    void entered(const QMimeData *content);
    void ended(); ///< left, dropped or called off

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QWidget *m_window;
};
