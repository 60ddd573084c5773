#pragma once

#include <QMenu>

/// Minimises its window, and lists the program's windows to bring one forward.
class WindowMenu : public QMenu
{
    Q_OBJECT

public:
    explicit WindowMenu(QWidget *window);

private:
    void listWindows();

    QAction *m_separator;
};
