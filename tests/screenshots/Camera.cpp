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

/// Paints the window at its place; one that has a frame on a desktop gets a line and a title here.
void paintOver(QPainter &painter, QWidget *window, QPoint place)
{
    painter.drawPixmap(place, window->grab());
    const bool hasTitle = window->windowType() == Qt::Dialog || window->windowType() == Qt::Sheet;
    painter.setPen(QApplication::palette().color(QPalette::Mid));
    QRect frame(place, window->size());
    if (hasTitle) {
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
    const QPoint origin = window->mapToGlobal(QPoint());
    const QWidgetList others = QApplication::topLevelWidgets();
    for (QWidget *other : others) {
        if (other != window && other->isVisible())
            paintOver(painter, other, other->mapToGlobal(QPoint()) - origin);
    }
    painter.end();
    const QString path = m_folder + u'/' + m_prefix + name + u".png";
    if (picture.save(path))
        return;
    std::fprintf(stderr, "%s cannot be written\n", qPrintable(path));
    std::exit(1);
}
