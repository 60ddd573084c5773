#pragma once

#include <QAction>
#include <QObject>

/// The commands of one library window, each one action that its menus and toolbar share.
class WindowCommands : public QObject
{
    Q_OBJECT

public:
    explicit WindowCommands(QObject *parent);

    QAction *const close;       ///< "Close", Ctrl+W
    QAction *const showSidebar; ///< checked while the sidebar is shown
    QAction *const showDetails; ///< checked while the details are shown; "Toggle details" in the toolbar
    QAction *const fullScreen;  ///< checkable
    QAction *const shortcuts;   ///< "Keyboard Shortcuts"
    QAction *const tagAll;      ///< "Tag All…": asks for a tag for all visible papers
};
