#include "ui/LibraryMenus.h"

#include "app/LibraryCommands.h"
#include "ui/EditMenu.h"
#include "ui/WindowCommands.h"
#include "ui/WindowMenu.h"

#include <QMainWindow>
#include <QMenuBar>

void addLibraryMenus(QMainWindow *window, const LibraryCommands &commands,
                     const WindowCommands &windowCommands)
{
    QMenuBar *bar = window->menuBar();
    QMenu *program = bar->addMenu(QStringLiteral("&Quirevault"));
    program->setToolTipsVisible(true); // they say what a command cannot do
    program->addActions({commands.about, commands.checkForUpdates});

    QMenu *file = bar->addMenu(QStringLiteral("&File"));
    file->addActions({commands.library, commands.importPDFs});
    file->addSeparator();
    file->addActions({windowCommands.close, commands.quit});

    auto *edit = new EditMenu(window);
    edit->addSeparator();
    edit->addAction(commands.findInLibrary);
    bar->addMenu(edit);

    bar->addMenu(QStringLiteral("&Library"))->addActions({commands.retagLibrary, commands.refresh});
    bar->addMenu(QStringLiteral("&View"))
        ->addActions({windowCommands.showSidebar, windowCommands.showDetails, windowCommands.fullScreen});
    bar->addMenu(new WindowMenu(window));
    bar->addMenu(QStringLiteral("&Help"))->addAction(windowCommands.shortcuts);
}
