// The parts of a reader window.
#include "reader/PDFViewerWindow.h"

#include "reader/PDFKitView.h"
#include "reader/PageField.h"
#include "reader/PrintFlow.h"
#include "reader/ReaderActions.h"
#include "reader/ReaderLayout.h"
#include "reader/ReaderSearchField.h"
#include "reader/ReaderSidebar.h"
#include "reader/ReaderToolBar.h"

#include <QDesktopServices>
#include <QMenuBar>
#include <QSplitter>
#include <QStackedWidget>

namespace
{
/// How long the rest waits for a page that may take its time. Chosen: nobody misses it for so long.
constexpr std::chrono::milliseconds kPagePatience{250};
} // namespace

PDFViewerWindow::PDFViewerWindow(const PDFOpenRequest &request, ReaderServices services)
    : m_services(std::move(services))
    , m_original(request)
    , m_request(request)
    , m_opening(std::make_unique<DocumentOpening>(m_services.library, m_services.makeDocument,
                                                  request.url.toLocalFile()))
{
    setObjectName(QStringLiteral("readerWindow"));
    setAttribute(Qt::WA_DeleteOnClose);
    m_opening->paperId = request.paperId;
    m_opening->open(); // the engine starts while the widgets are made
    makeParts();
    observe();
    m_controller->setRequest(m_request);
    m_view->setFocus();
    // Both may have had their answer already.
    m_opening->takeIfOpen();
    moveTo(m_opening->path);
    showState();
}

PDFViewerWindow::~PDFViewerWindow()
{
    m_view->setDocument(nullptr); // it goes before the widgets do
}

void PDFViewerWindow::makeParts()
{
    m_view = new PDFKitView(m_services.clock);
    m_controller = std::make_unique<PDFViewerController>(PDFViewerController::Collaborators{
        .view = *m_view,
        .library = m_services.library,
        .bookmarkEvents = m_services.bookmarkEvents,
        .clock = m_services.clock,
        .searchInPaper = m_services.searchInPaper,
    });
    m_actions = new ReaderActions(*m_view, *m_controller, this);
    m_toolBar = new ReaderToolBar(*m_actions, *m_controller, this);
    m_printFlow = new PrintFlow(this);
    addToolBar(Qt::TopToolBarArea, m_toolBar);
    m_actions->fillMenuBar(*menuBar());

    m_splitter = new QSplitter(Qt::Horizontal, this);
    m_sidebar = new ReaderSidebar(*m_controller, *m_view, m_splitter);
    m_pages = new QStackedWidget(m_splitter);
    m_pages->addWidget(m_view);
    setCentralWidget(m_splitter);
    m_layout = std::make_unique<ReaderLayout>(
        m_services.preferences,
        ReaderLayout::Parts{.window = this, .splitter = m_splitter, .sidebar = m_sidebar, .view = m_view});
    m_layout->restore();
    connectActions();
    connectView();
    m_pagePatience = m_services.clock.callAfter(kPagePatience, [this] { showWhatCanWait(); });
}

void PDFViewerWindow::connectActions()
{
    m_actions->sidebar->setChecked(m_layout->isSidebarShown());
    m_actions->darkMode->setChecked(m_view->isDarkMode());
    connect(m_actions->sidebar, &QAction::toggled, this, [this](bool on) { m_layout->showSidebar(on); });
    connect(m_actions->darkMode, &QAction::toggled, this, [this](bool on) { m_view->setDarkMode(on); });
    connect(m_actions->fullScreen, &QAction::toggled, this, &PDFViewerWindow::setFullScreen);
    connect(m_actions->bookmarkSelection, &QAction::triggered, this, &PDFViewerWindow::askForBookmark);
    connect(m_actions->find, &QAction::triggered, this, &PDFViewerWindow::find);
    connect(m_actions->goToPage, &QAction::triggered, this, [this] {
        m_toolBar->show(); // it hides on the full screen
        m_toolBar->pageField().edit();
    });
    connect(m_actions->print, &QAction::triggered, this, [this] { m_printFlow->ask(m_opening->document()); });
    connect(m_actions->showLibrary, &QAction::triggered, this, [this] {
        if (m_services.showLibrary)
            m_services.showLibrary();
    });
    connect(m_actions->close, &QAction::triggered, this, &QWidget::close);
}

void PDFViewerWindow::connectView()
{
    const auto toDocument = [this] {
        m_pages->currentWidget()->setFocus();
    };
    connect(&m_toolBar->pageField(), &PageField::done, this, toDocument);
    connect(&m_toolBar->searchField(), &ReaderSearchField::leaving, this, toDocument);
    // Queued, so that it comes after whatever the page has set off.
    connect(m_view, &PDFKitView::firstShown, this, &PDFViewerWindow::showWhatCanWait, Qt::QueuedConnection);
    connect(m_view, &PDFKitView::bookmarkRequested, this, &PDFViewerWindow::askForBookmark);
    connect(m_view, &PDFKitView::hitMarkActivated, m_controller.get(), &PDFViewerController::goToHit);
    connect(m_view, &PDFKitView::librarySearchRequested, this, [this](const QString &text) {
        if (m_services.searchInLibrary)
            m_services.searchInLibrary(text);
    });
    connect(m_view, &PDFKitView::linkActivated, this, [this](const QUrl &address) {
        m_services.openAddress ? m_services.openAddress(address)
                               : static_cast<void>(QDesktopServices::openUrl(address));
    });
    connect(m_opening.get(), &DocumentOpening::documentLeaving, this, [this] {
        m_view->setDocument(nullptr);
        m_hasShownDocument = false;
    });
    connect(m_controller.get(), &PDFViewerController::pageShown, this,
            [this](const QUuid &, qint64 pageNumber) { rememberPage(pageNumber); });
}

void PDFViewerWindow::observe()
{
    const auto watch = [this](auto &property, auto changed) {
        m_observers.push_back(property.addNotifier([this, changed] { (this->*changed)(); }));
    };
    watch(m_opening->state, &PDFViewerWindow::showState);
    watch(m_controller->searchResults, &PDFViewerWindow::showHitMarks);
    watch(m_controller->currentHit, &PDFViewerWindow::showHitMarks);
    watch(m_controller->searchText, &PDFViewerWindow::searchTextChanged);
    m_observers.push_back(m_opening->path.addNotifier([this] {
        moveTo(m_opening->path);
        findPaper();
    }));
    m_actions->back->setEnabled(m_controller->canGoBack);
    m_actions->forward->setEnabled(m_controller->canGoForward);
    m_observers.push_back(m_controller->canGoBack.addNotifier(
        [this] { m_actions->back->setEnabled(m_controller->canGoBack); }));
    m_observers.push_back(m_controller->canGoForward.addNotifier(
        [this] { m_actions->forward->setEnabled(m_controller->canGoForward); }));
}

void PDFViewerWindow::takeWhatCame()
{
    m_opening->takeIfOpen();
    m_view->takeSizes();
}

PDFViewerWindow *openPDFViewerWindow(const PDFOpenRequest &request, const ReaderServices &services)
{
    auto *window = new PDFViewerWindow(request, services);
    window->show();
    window->takeWhatCame();
    return window;
}
