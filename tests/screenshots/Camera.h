#pragma once

#include <QPixmap>
#include <QString>
#include <QWidget>

/// Takes pictures of a window together with what lies over it: dialogs and menus are windows of their own.
class Camera
{
public:
    /// Pictures go to `folder`, their names begin with `prefix`.
    Camera(const QString &folder, const QString &prefix);

    /// Lets pictures arrive and movements end, then writes "<prefix><name>.png".
    void take(QWidget *window, const QString &name);

    /// Runs what is due for that long.
    static void settle(int milliseconds = 400);

private:
    QString m_folder;
    QString m_prefix;
};
