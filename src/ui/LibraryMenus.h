#pragma once

class LibraryCommands;
class QMainWindow;
class WindowCommands;

/// Fills the menu bar of a library window.
void addLibraryMenus(QMainWindow *window, const LibraryCommands &commands,
                     const WindowCommands &windowCommands);
