#pragma once

#include <QToolBar>

class LibraryCommands;
class LibraryViewModel;
class QMenu;
class WindowCommands;

/// The library window's toolbar: importing, refreshing, tags of all visible papers, and the details' switch.
class LibraryToolBar : public QToolBar
{
    Q_OBJECT

public:
    LibraryToolBar(LibraryViewModel &vm, const LibraryCommands &commands,
                   const WindowCommands &windowCommands, QWidget *parent = nullptr);

private:
    /// The menu is filled each time it opens.
    QMenu *addMenuButton(const QString &title, const QString &toolTip, const QIcon &icon);
    void fillTagMenu(QMenu *menu, QAction *tagAll);
    void fillRemoveMenu(QMenu *menu);

    LibraryViewModel &m_vm;
};
