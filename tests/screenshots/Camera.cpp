#include "screenshots/Camera.h"

#include <QApplication>
#include <QDir>
#include <QEventLoop>
#include <QPainter>
#include <QTimer>
#include <cstdio>
#include <cstdlib>

namespace
{

bool isDialog(const QWidget *window)
{
    return window->windowType() == Qt::Dialog || window->windowType() == Qt::Sheet;
}

/// Where `other` lies over the window; desktops put dialogs into the middle.
QPoint placeOver(const QWidget *window, const QWidget *other)
{
    if (isDialog(other))
        return window->rect().center() - other->rect().center();
    return other->mapToGlobal(QPoint()) - window->mapToGlobal(QPoint());
}

/// Paints the window at its place; one that has a frame on a desktop gets a line and a title here.
void paintOver(QPainter &painter, QWidget *window, QPoint place)
{
    painter.drawPixmap(place, window->grab());
    painter.setPen(QApplication::palette().color(QPalette::Mid));
    QRect frame(place, window->size());
    if (isDialog(window)) {
        constexpr int kTitlePx = 26;
        const QRect title(place.x(), place.y() - kTitlePx, window->width(), kTitlePx);
        painter.fillRect(title, QApplication::palette().color(QPalette::Button));
        painter.drawRect(title);
        painter.setPen(QApplication::palette().color(QPalette::ButtonText));
        painter.drawText(title, Qt::AlignCenter, window->windowTitle());
        painter.setPen(QApplication::palette().color(QPalette::Mid));
    }
    painter.drawRect(frame);
}

} // namespace

Camera::Camera(const QString &folder, const QString &prefix)
    : m_folder(folder)
    , m_prefix(prefix)
{
    QDir().mkpath(folder);
}

void Camera::settle(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

void Camera::take(QWidget *window, const QString &name)
{
    settle();
    QPixmap picture = window->grab();
    QPainter painter(&picture);
    const QWidgetList others = QApplication::topLevelWidgets();
    for (QWidget *other : others) {
        if (other != window && other->isVisible())
            paintOver(painter, other, placeOver(window, other));
    }
    painter.end();
    const QString path = m_folder + u'/' + m_prefix + name + u".png";
    if (picture.save(path))
        return;
    std::fprintf(stderr, "%s cannot be written\n", qPrintable(path));
    std::exit(1);
}
