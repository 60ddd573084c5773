#pragma once

#include <QIcon>

/// The desktop theme's icon of a freedesktop name; Breeze's, light or dark as the palette, where the theme
/// has none. Asked anew at each call, because a desktop may change between light and dark.
QIcon themeIcon(const QString &name);

/// The program's own, for its windows. Wayland takes it from the desktop file of the same name.
QIcon programIcon();
