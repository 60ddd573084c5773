#pragma once

#include <QString>

/// Where the library lives: $XDG_DATA_HOME/Quirevault, by default ~/.local/share/Quirevault. Not created
/// here.
QString dataFolder();
QString libraryDatabasePath();
QString coversFolder();
QString sessionFilePath();
/// The papers as the desktop's search is told of them; it can be thrown away. It lies with the library it was
/// made from and not among the caches, where those of two libraries would meet and which people clear.
QString systemSearchPath();

/// Where the library lies when nothing in the environment says otherwise.
QString defaultDataFolder();

/// The user's folder for what they download. Not created here.
QString downloadsFolder();

/// The folder of the running executable.
QString programFolder();

/// Another executable of this project: the one beside the running program, else the one in
/// ../libexec/quirevault from there. The last is answered even where it does not exist.
QString companionProgram(const QString &name);

/// `path` as people read it: "~" stands for their home folder. Not for opening anything.
QString pathForPeople(const QString &path);
