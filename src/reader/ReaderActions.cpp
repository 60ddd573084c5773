#include "reader/ReaderActions.h"

#include "reader/PDFKitView.h"
#include "reader/PDFViewerController.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>

ReaderActions::ReaderActions(PDFKitView &view, PDFViewerController &controller, QWidget *window)
    : QObject(window)
    , m_view(view)
    , m_window(window)
{
    makeViewActions();
    makeWindowActions();
    makeMoreMenu();
    const QIcon blank = blankIcon();
    for (const auto &[action, symbol] : m_symbols)
        action->setIcon(blank);
    connectToView(controller);
}

QAction *ReaderActions::add(const char *name, const QString &text, const QKeySequence &shortcut)
{
    auto *action = new QAction(text, this);
    action->setObjectName(QLatin1String(name));
    action->setShortcut(shortcut);
    if (!shortcut.isEmpty())
        action->setToolTip(QString(text + u" (" + shortcut.toString(QKeySequence::NativeText) + u')'));
    m_window->addAction(action); // shortcuts hold also while the menu bar is hidden
    return action;
}

QAction *ReaderActions::add(const char *name, const QString &text, ReaderSymbol symbol,
                            const QKeySequence &shortcut)
{
    QAction *action = add(name, text, shortcut);
    m_symbols.emplace_back(action, symbol);
    return action;
}

void ReaderActions::makeViewActions()
{
    back = add("back", QStringLiteral("Back"), ReaderSymbol::Back, QKeySequence(QStringLiteral("Alt+Left")));
    forward = add("forward", QStringLiteral("Forward"), ReaderSymbol::Forward,
                  QKeySequence(QStringLiteral("Alt+Right")));
    zoomOut = add("zoomOut", QStringLiteral("Zoom Out"), ReaderSymbol::ZoomOut,
                  QKeySequence(QStringLiteral("Ctrl+-")));
    actualSize = add("actualSize", QStringLiteral("Actual Size"), ReaderSymbol::ActualSize,
                     QKeySequence(QStringLiteral("Ctrl+0")));
    zoomIn = add("zoomIn", QStringLiteral("Zoom In"), ReaderSymbol::ZoomIn,
                 QKeySequence(QStringLiteral("Ctrl++")));
    zoomIn->setShortcuts({QKeySequence(QStringLiteral("Ctrl++")), QKeySequence(QStringLiteral("Ctrl+="))});
    fitWidth = add("fitWidth", QStringLiteral("Fit Width"), ReaderSymbol::FitWidth,
                   QKeySequence(QStringLiteral("Ctrl+1")));
    fitPage = add("fitPage", QStringLiteral("Fit Page"), ReaderSymbol::FitPage,
                  QKeySequence(QStringLiteral("Ctrl+2")));
    rotateLeft = add("rotateLeft", QStringLiteral("Rotate Left"), ReaderSymbol::RotateLeft,
                     QKeySequence(QStringLiteral("Ctrl+Shift+R")));
    rotateRight = add("rotateRight", QStringLiteral("Rotate Right"), ReaderSymbol::RotateRight,
                      QKeySequence(QStringLiteral("Ctrl+R")));
    nextHit = add("nextHit", QStringLiteral("Next Hit"), QKeySequence(QStringLiteral("F3")));
    previousHit =
        add("previousHit", QStringLiteral("Previous Hit"), QKeySequence(QStringLiteral("Shift+F3")));
}

void ReaderActions::makeWindowActions()
{
    bookmarkSelection = add("bookmarkSelection", QStringLiteral("Bookmark Selection"),
                            ReaderSymbol::BookmarkSelection, QKeySequence(QStringLiteral("Ctrl+D")));
    darkMode = add("darkMode", QStringLiteral("Dark Pages"), ReaderSymbol::DarkMode,
                   QKeySequence(QStringLiteral("Ctrl+I")));
    sidebar =
        add("sidebar", QStringLiteral("Sidebar"), ReaderSymbol::Sidebar, QKeySequence(QStringLiteral("F9")));
    find = add("find", QStringLiteral("Find"), ReaderSymbol::Search, QKeySequence(QStringLiteral("Ctrl+F")));
    goToPage = add("goToPage", QStringLiteral("Go to Page"), QKeySequence(QStringLiteral("Ctrl+G")));
    print =
        add("print", QStringLiteral("Print…"), ReaderSymbol::Print, QKeySequence(QStringLiteral("Ctrl+P")));
    fullScreen = add("fullScreen", QStringLiteral("Full Screen"), QKeySequence(QStringLiteral("F11")));
    showLibrary = add("showLibrary", QStringLiteral("Show Library"), QKeySequence(QStringLiteral("Ctrl+L")));
    close = add("close", QStringLiteral("Close"), QKeySequence(QStringLiteral("Ctrl+W")));
    for (QAction *action : {darkMode, sidebar, fullScreen})
        action->setCheckable(true);
}

void ReaderActions::connectToView(PDFViewerController &controller)
{
    connect(back, &QAction::triggered, this, [this, &controller] {
        m_view.goBack();
        controller.refreshNavigation();
    });
    connect(forward, &QAction::triggered, this, [this, &controller] {
        m_view.goForward();
        controller.refreshNavigation();
    });
    connect(zoomOut, &QAction::triggered, this, [this] { m_view.zoomOut(); });
    connect(actualSize, &QAction::triggered, this, [this] { m_view.zoomToActualSize(); });
    connect(zoomIn, &QAction::triggered, this, [this] { m_view.zoomIn(); });
    connect(fitWidth, &QAction::triggered, this, [this] { m_view.scaleAutomatically(); });
    connect(fitPage, &QAction::triggered, this, [this] { m_view.scaleToPage(); });
    connect(rotateLeft, &QAction::triggered, this, [this] { m_view.rotatePages(PDFKitView::Turn::Left); });
    connect(rotateRight, &QAction::triggered, this, [this] { m_view.rotatePages(PDFKitView::Turn::Right); });
    connect(nextHit, &QAction::triggered, &controller, &PDFViewerController::goToNextHit);
    connect(previousHit, &QAction::triggered, &controller, &PDFViewerController::goToPreviousHit);
}

void ReaderActions::fillMenuBar(QMenuBar &menuBar) const
{
    QMenu *file = menuBar.addMenu(QStringLiteral("&File"));
    file->addActions({print, close});
    QMenu *edit = menuBar.addMenu(QStringLiteral("&Edit"));
    edit->addActions({m_view.copyAction(), m_view.selectAllAction()});
    edit->addSeparator();
    edit->addActions({find, nextHit, previousHit});
    edit->addSeparator();
    edit->addAction(bookmarkSelection);
    QMenu *view = menuBar.addMenu(QStringLiteral("&View"));
    view->addActions({zoomIn, zoomOut, actualSize, fitWidth, fitPage});
    view->addSeparator();
    view->addActions({rotateLeft, rotateRight});
    view->addSeparator();
    view->addActions({darkMode, sidebar, fullScreen});
    QMenu *go = menuBar.addMenu(QStringLiteral("&Go"));
    go->addActions({back, forward, goToPage});
    go->addSeparator();
    go->addAction(showLibrary);
}

void ReaderActions::makeMoreMenu()
{
    more = add("more", QStringLiteral("More"), ReaderSymbol::More);
    auto *menu = new QMenu(m_window);
    menu->addActions({fitWidth, fitPage, rotateLeft});
    menu->addSeparator();
    menu->addActions({print, fullScreen, showLibrary});
    more->setMenu(menu);
}

void ReaderActions::showIcons()
{
    for (const auto &[action, symbol] : std::exchange(m_symbols, {}))
        action->setIcon(readerIcon(symbol));
}
