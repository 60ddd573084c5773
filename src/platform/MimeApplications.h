#pragma once

#include "platform/DesktopEntry.h"

#include <QList>
#include <QStringList>

/// Where the desktop keeps what programs there are, and which are preferred; the user's own folders first.
struct DesktopFolders {
    QStringList config;   ///< $XDG_CONFIG_HOME, then $XDG_CONFIG_DIRS
    QStringList data;     ///< $XDG_DATA_HOME, then $XDG_DATA_DIRS
    QStringList desktops; ///< $XDG_CURRENT_DESKTOP in lower case, such as "gnome"

    static DesktopFolders ofTheUser();
};

/// The programs that open files of the type `mimeType`, the preferred first: the defaults of the lists
/// "mimeapps.list", then the associations that they add, then the programs that name the type themselves.
/// Those whose association the user removed, that are hidden or not installed are left out. Reads files: not
/// for the main thread.
QList<DesktopEntry> applicationsFor(const QString &mimeType, const DesktopFolders &folders);
