#pragma once

#include "reader/ReaderSymbols.h"

#include <QKeySequence>
#include <QObject>
#include <utility>
#include <vector>

class PDFKitView;
class PDFViewerController;
class QAction;
class QMenu;
class QMenuBar;
class QWidget;

/// The commands of one reader window, each one action for menus, tool bar and shortcut. Those that only the
/// view and the controller need do their work already; the window connects the others.
class ReaderActions : public QObject
{
    Q_OBJECT

public:
    /// All must outlive the actions; `window` gets their shortcuts.
    ReaderActions(PDFKitView &view, PDFViewerController &controller, QWidget *window);

    // Done by the view and the controller.
    QAction *back;
    QAction *forward;
    QAction *zoomOut;
    QAction *actualSize;
    QAction *zoomIn;
    QAction *fitWidth;
    QAction *fitPage;
    QAction *rotateLeft;
    QAction *rotateRight;
    QAction *nextHit;
    QAction *previousHit;

    // Done by the window.
    QAction *bookmarkSelection;
    QAction *darkMode; ///< checkable
    QAction *sidebar;  ///< checkable
    QAction *find;
    QAction *goToPage;
    QAction *print;
    QAction *fullScreen; ///< checkable
    QAction *showLibrary;
    QAction *close;

    /// What the tool bar has no room for: a menu.
    QAction *more;

    /// Until then they are blank: the first icon takes longer to find than a page takes to draw.
    void showIcons();

    void fillMenuBar(QMenuBar &menuBar) const;

private:
    QAction *add(const char *name, const QString &text, const QKeySequence &shortcut = {});
    QAction *add(const char *name, const QString &text, ReaderSymbol symbol,
                 const QKeySequence &shortcut = {});
    void makeMoreMenu();
    void makeViewActions();
    void makeWindowActions();
    void connectToView(PDFViewerController &controller);

    PDFKitView &m_view;
    QWidget *m_window;
    std::vector<std::pair<QAction *, ReaderSymbol>> m_symbols;
};
