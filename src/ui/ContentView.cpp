#include "ui/ContentView.h"

#include "app/LibraryCommands.h"
#include "app/LibraryViewModel.h"
#include "reader/ThemeIcon.h"
#include "ui/Alert.h"
#include "ui/ClosingQuestion.h"
#include "ui/DragContent.h"
#include "ui/DragWatcher.h"
#include "ui/FileDropTarget.h"
#include "ui/ImportPanel.h"
#include "ui/IndexingOverlay.h"
#include "ui/LibraryAlertsModifier.h"
#include "ui/LibraryMenus.h"
#include "ui/LibraryToolBar.h"
#include "ui/LibraryView.h"
#include "ui/PaperDetailPanel.h"
#include "ui/PaperGrid.h"
#include "ui/RetaggingOverlay.h"
#include "ui/ShortcutsWindow.h"
#include "ui/Sidebar.h"
#include "ui/TagAlerts.h"
#include "ui/WindowCommands.h"

#include <QApplication>
#include <QCloseEvent>
#include <QSplitter>
#include <QVBoxLayout>

namespace
{
/// Room for four columns of cards between the panels.
constexpr QSize kWindowSize(1340, 840);
constexpr int kSidebarPx = 220;
constexpr int kDetailsPx = 320;
/// Two columns of cards with their margins and a scroll bar.
constexpr int kContentMinimumPx = 416;
/// Together with the content they fit into 800 pixels.
constexpr int kSidebarMinimumPx = 180; // "Currently Reading" whole, with its count
constexpr int kDetailsMinimumPx = 202;
} // namespace

ContentView::ContentView(Collaborators with, QWidget *parent)
    : QMainWindow(parent)
    , m_vm(with.vm)
    , m_commands(with.commands)
    , m_isQuitting(std::move(with.isQuitting))
    , m_windowCommands(new WindowCommands(this))
    , m_toolBar(new LibraryToolBar(with.vm, with.commands, *m_windowCommands, this))
    , m_panes(new QSplitter)
    , m_sidebar(new Sidebar(with.vm))
    , m_library(new LibraryView(with.vm, with.covers, with.openWindow))
    , m_details(new PaperDetailPanel(with.vm, with.covers, with.openWindow))
    , m_dropTarget(new FileDropTarget(this))
    , m_tagAlerts(new TagAlerts(with.vm, this))
    , m_alerts(new LibraryAlertsModifier(with.vm, this))
    , m_layout(with.preferences, this, m_panes)
    , m_closingQuestion(new ClosingQuestion(with.vm, this))
    , m_drags(new DragWatcher(this))
{
    setObjectName(QStringLiteral("libraryWindow"));
    setWindowTitle(QStringLiteral("Library"));
    QApplication::setWindowIcon(programIcon());
    addToolBar(m_toolBar);
    addLibraryMenus(this, m_commands, *m_windowCommands);
    addPanes();
    addOverlays();
    m_layout.restore(kWindowSize, {kSidebarPx, kWindowSize.width() - kSidebarPx - kDetailsPx, kDetailsPx});
    connectPanes();
    connectCommands();
    connectCards();
    connectDrags();
    m_vm.setOpenPanel([this](auto chosen) { ImportPanel::choose(this, std::move(chosen)); });
}

ContentView::~ContentView()
{
    m_vm.setOpenPanel({});
    if (m_commands.focusedLibrary() == &m_vm)
        m_commands.setFocusedLibrary(nullptr);
}

void ContentView::addPanes()
{
    m_panes->setObjectName(QStringLiteral("panes"));
    m_panes->addWidget(m_sidebar);
    m_panes->addWidget(m_library);
    m_panes->addWidget(m_details);
    m_panes->setChildrenCollapsible(false);
    m_panes->setStretchFactor(1, 1);
    m_panes->setHandleWidth(1);
    m_sidebar->setMinimumWidth(kSidebarMinimumPx);
    m_library->setMinimumWidth(kContentMinimumPx);
    m_details->setMinimumWidth(kDetailsMinimumPx);

    // The panes have a parent that the overlays can share.
    auto *centre = new QWidget(this);
    auto *layout = new QVBoxLayout(centre);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_panes);
    setCentralWidget(centre);
}

void ContentView::addOverlays()
{
    new IndexingOverlay(m_vm, m_panes);
    new RetaggingOverlay(m_vm, m_panes);
    const auto lock = [this] {
        lockToolBar();
    };
    m_observers.push_back(m_vm.isImporting.addNotifier(lock));
    m_observers.push_back(m_vm.isRetagging.addNotifier(lock));
    lockToolBar();
}

void ContentView::connectPanes()
{
    m_windowCommands->showSidebar->setChecked(!m_sidebar->isHidden());
    m_windowCommands->showDetails->setChecked(!m_details->isHidden());
    connect(m_windowCommands->showSidebar, &QAction::toggled, m_sidebar, &QWidget::setVisible);
    connect(m_windowCommands->showDetails, &QAction::toggled, m_details, &QWidget::setVisible);
    connect(m_sidebar, &Sidebar::newTagRequested, m_tagAlerts, &TagAlerts::newTag);
    connect(m_sidebar, &Sidebar::renameTagRequested, m_tagAlerts, &TagAlerts::renameTag);
    connect(m_sidebar, &Sidebar::deleteTagRequested, m_tagAlerts, &TagAlerts::deleteTag);
}

void ContentView::connectCommands()
{
    connect(m_windowCommands->close, &QAction::triggered, this, &QWidget::close);
    connect(m_windowCommands->fullScreen, &QAction::toggled, this, [this](bool isFull) {
        setWindowState(isFull ? windowState() | Qt::WindowFullScreen : windowState() & ~Qt::WindowFullScreen);
    });
    connect(m_windowCommands->shortcuts, &QAction::triggered, this,
            [this] { (new ShortcutsWindow(this))->show(); });
    connect(m_windowCommands->tagAll, &QAction::triggered, m_tagAlerts, &TagAlerts::tagAll);
}

void ContentView::connectCards()
{
    for (const PaperGrid *cards : m_library->grids()) {
        connect(cards, &PaperGrid::detailsToggleRequested, m_windowCommands->showDetails, &QAction::toggle);
        connect(cards, &PaperGrid::editRequested, this,
                [this] { editDetails(&PaperDetailPanel::beginEditing); });
        connect(cards, &PaperGrid::tagRequested, this,
                [this] { editDetails(&PaperDetailPanel::focusTagField); });
    }
}

void ContentView::connectDrags()
{
    connect(m_drags, &DragWatcher::entered, this, [this](const QMimeData *content) {
        m_sidebar->setCardDragged(isCardDrag(content));
        const bool canImport = !m_vm.isImporting && !QApplication::activeModalWidget();
        m_dropTarget->setShown(canImport && !draggedLocations(content).isEmpty());
    });
    connect(m_drags, &DragWatcher::ended, this, [this] {
        m_sidebar->setCardDragged(false);
        m_dropTarget->setShown(false);
    });
    connect(m_dropTarget, &FileDropTarget::dropped, this,
            [this](const QStringList &locations) { m_vm.importLocations(locations); });
}

void ContentView::editDetails(void (PaperDetailPanel::*edit)())
{
    m_windowCommands->showDetails->setChecked(true);
    (m_details->*edit)();
}

void ContentView::lockToolBar()
{
    m_toolBar->setEnabled(!m_vm.isImporting && !m_vm.isRetagging);
}

void ContentView::tellFocus()
{
    if (isActiveWindow())
        m_commands.setFocusedLibrary(&m_vm);
    else if (m_commands.focusedLibrary() == &m_vm)
        m_commands.setFocusedLibrary(nullptr);
}

void ContentView::changeEvent(QEvent *event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::ActivationChange)
        tellFocus();
    if (event->type() == QEvent::WindowStateChange)
        m_windowCommands->fullScreen->setChecked(isFullScreen());
}

void ContentView::showEvent(QShowEvent *event)
{
    QMainWindow::showEvent(event);
    if (m_wasShown)
        return;
    m_wasShown = true;
    m_drags->start();
    m_library->focusContent();
    m_alerts->showPending();
}

void ContentView::closeEvent(QCloseEvent *event)
{
    const auto closeAgain = [this, isQuitting = m_isQuitting()] {
        if (isQuitting)
            m_commands.quit->trigger(); // which closes this window first
        else
            close();
    };
    if (!m_closingQuestion->mayClose(closeAgain)) {
        event->ignore();
        return;
    }
    m_layout.save();
    QMainWindow::closeEvent(event);
    Q_EMIT closed();
}
