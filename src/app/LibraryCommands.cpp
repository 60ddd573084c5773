#include "app/LibraryCommands.h"

#include "app/LibraryViewModel.h"

#include <utility>

QAction *actionNamed(const QString &name, const QString &text, QObject *parent, const QKeySequence &shortcut)
{
    auto *action = new QAction(text, parent);
    action->setObjectName(name);
    action->setShortcut(shortcut);
    return action;
}

LibraryCommands::LibraryCommands(Targets targets, QObject *parent)
    : QObject(parent)
    , about(actionNamed(QStringLiteral("about"), QStringLiteral("About Quirevault"), this))
    , checkForUpdates(
          actionNamed(QStringLiteral("check-for-updates"), QStringLiteral("Check for Updates…"), this))
    , library(actionNamed(QStringLiteral("library"), QStringLiteral("Library"), this, Qt::CTRL | Qt::Key_L))
    , quit(actionNamed(QStringLiteral("quit"), QStringLiteral("Quit"), this, Qt::CTRL | Qt::Key_Q))
    , findInLibrary(actionNamed(QStringLiteral("find-in-library"), QStringLiteral("Find in Library"), this,
                                Qt::CTRL | Qt::Key_F))
    , importPDFs(actionNamed(QStringLiteral("import-pdfs"), QStringLiteral("Import PDFs…"), this,
                             Qt::CTRL | Qt::Key_I))
    , retagLibrary(actionNamed(QStringLiteral("retag-library"), QStringLiteral("Retag Library…"), this))
    , refresh(actionNamed(QStringLiteral("refresh"), QStringLiteral("Refresh"), this, Qt::Key_F5))
{
    // What a toolbar shows.
    importPDFs->setIconText(QStringLiteral("Import PDFs"));
    refresh->setIconText(QStringLiteral("Refresh library"));
    about->setMenuRole(QAction::AboutRole);
    quit->setMenuRole(QAction::QuitRole);
    connect(about, &QAction::triggered, this, targets.showAbout);
    connect(checkForUpdates, &QAction::triggered, this, targets.checkForUpdates);
    connect(library, &QAction::triggered, this, targets.openLibraryWindow);
    connect(quit, &QAction::triggered, this, targets.quit);

    const auto onLibrary = [this](QAction *action, auto run) {
        connect(action, &QAction::triggered, this, [this, run] {
            if (m_vm)
                run(*m_vm);
        });
    };
    onLibrary(findInLibrary, [](LibraryViewModel &vm) { vm.requestSearchFocus(); });
    onLibrary(importPDFs, [](LibraryViewModel &vm) { vm.chooseAndImport(); });
    onLibrary(retagLibrary, [](LibraryViewModel &vm) { vm.retagLibrary(); });
    onLibrary(refresh, [](LibraryViewModel &vm) { vm.loadPapers(); });
}

LibraryCommands::~LibraryCommands() = default;

void LibraryCommands::setFocusedLibrary(LibraryViewModel *vm)
{
    m_vm = vm;
}

LibraryViewModel *LibraryCommands::focusedLibrary() const
{
    return m_vm;
}
