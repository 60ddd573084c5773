#include "ui/WindowMenu.h"

#include "ui/ActionText.h"

#include <QApplication>
#include <QMainWindow>

WindowMenu::WindowMenu(QWidget *window)
    : QMenu(QStringLiteral("&Window"), window)
{
    QAction *minimize = addAction(QStringLiteral("Minimize"), window, &QWidget::showMinimized);
    minimize->setShortcut(Qt::CTRL | Qt::Key_M);
    m_separator = addSeparator();
    connect(this, &QMenu::aboutToShow, this, &WindowMenu::listWindows);
}

void WindowMenu::listWindows()
{
    const QList<QAction *> all = actions();
    for (QAction *old : all.mid(all.indexOf(m_separator) + 1)) {
        removeAction(old);
        old->deleteLater();
    }
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        if (!qobject_cast<QMainWindow *>(window) || !window->isVisible())
            continue;
        QAction *entry = addAction(asActionText(window->windowTitle()), window, [window] {
            window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
            window->raise();
            window->activateWindow();
        });
        entry->setCheckable(true);
        entry->setChecked(window == QApplication::activeWindow());
    }
}
