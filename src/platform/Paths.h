#pragma once

#include <QString>

/// Where the library lives: $XDG_DATA_HOME/Quirevault, by default ~/.local/share/Quirevault. Not created
/// here.
QString dataFolder();
QString libraryDatabasePath();
QString coversFolder();
QString sessionFilePath();

/// The folder of the running executable.
QString programFolder();
