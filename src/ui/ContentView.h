#pragma once

#include "reader/PDFOpenRequest.h"

#include <QMainWindow>

class CoverCache;
class LibraryCommands;
class LibraryViewModel;
class Preferences;

/// The library window: sidebar, search field with grid or results, and detail panel, with menus, toolbar,
/// alerts and overlays. It shows the view model's state and calls its operations.
class ContentView : public QMainWindow
{
    Q_OBJECT

public:
    /// All must outlive the window.
    struct Collaborators {
        LibraryViewModel &vm;
        LibraryCommands &commands;
        CoverCache &covers;
        Preferences &preferences; ///< remembers the window's layout
        OpenReaderWindow openWindow;
    };
    explicit ContentView(Collaborators collaborators, QWidget *parent = nullptr);

Q_SIGNALS:
    /// The person closed the window (an import that runs has been asked about).
    void closed();
};
