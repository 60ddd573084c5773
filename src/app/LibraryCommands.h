#pragma once

#include <QAction>
#include <QKeySequence>
#include <QObject>
#include <QPointer>
#include <functional>

class LibraryViewModel;

/// A command: people read `text`; of the application's, other programs call one by its `name`.
QAction *actionNamed(const QString &name, const QString &text, QObject *parent,
                     const QKeySequence &shortcut = {});

/// The commands of the application, each one action that menus, toolbars and context menus share. Commands
/// that work on a library do nothing while no library window has focus; none is ever disabled for that.
/// Main thread.
class LibraryCommands : public QObject
{
    Q_OBJECT

public:
    /// What the commands do outside the library; supplied by the application.
    struct Targets {
        std::function<void()> showAbout;
        std::function<void()> checkForUpdates;
        std::function<void()> openLibraryWindow;
        std::function<void()> quit;
    };
    explicit LibraryCommands(Targets targets, QObject *parent = nullptr);
    ~LibraryCommands() override;

    /// The library of the window that has focus, or null.
    void setFocusedLibrary(LibraryViewModel *vm);
    LibraryViewModel *focusedLibrary() const;

    QAction *const about;           ///< "About Quirevault"
    QAction *const checkForUpdates; ///< "Check for Updates…"
    QAction *const library;         ///< "Library", Ctrl+L
    QAction *const quit;            ///< Ctrl+Q
    QAction *const findInLibrary;   ///< "Find in Library", Ctrl+F
    QAction *const importPDFs;      ///< "Import PDFs…", Ctrl+I
    QAction *const retagLibrary;    ///< "Retag Library…"
    QAction *const refresh;         ///< reloads the papers of the current selection, F5

private:
    QPointer<LibraryViewModel> m_vm;
};
