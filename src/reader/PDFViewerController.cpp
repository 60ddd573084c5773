// The document and its pages.
#include "reader/PDFViewerController.h"

#include "base/DecimalInteger.h"
#include "pdf/PDFSelection.h"
#include "reader/PDFView.h"
#include "reader/ReaderDocument.h"
#include "store/BookmarkEvents.h"

#include <QPointer>
#include <qcorofuture.h>

namespace
{
/// How long a document is shown before the first jump in it.
constexpr std::chrono::milliseconds kFirstNavigationDelay{50};
/// After so many losses of the engine a document is read without outline and labels. Chosen: a page that ends
/// the engine takes the outline's answer with it, at most twice.
constexpr int kTriesOfFatalStructure = 3;
} // namespace

PDFViewerController::PDFViewerController(Collaborators collaborators, QObject *parent)
    : QObject(parent)
    , m_with(std::move(collaborators))
{
    observeView();
    m_observers.push_back(searchText.addNotifier([this] { scheduleSearch(); }));
    m_observers.push_back(m_with.bookmarkEvents.bindableLastChange().addNotifier([this] {
        const auto change = m_with.bookmarkEvents.lastChange();
        if (isOnPaper() && change && change->paperId == m_request->paperId)
            loadBookmarks();
    }));
}

PDFViewerController::~PDFViewerController()
{
    m_with.view.pageChanged = {};
    m_with.view.selectionChanged = {};
    m_with.view.historyChanged = {};
    m_loading.request_stop();
    m_search.request_stop();
    m_highlighting.request_stop();
}

void PDFViewerController::observeView()
{
    m_with.view.pageChanged = [this] {
        handlePageChange();
    };
    m_with.view.selectionChanged = [this] {
        handleSelectionChange();
    };
    m_with.view.historyChanged = [this] {
        handleHistoryChange();
    };
}

void PDFViewerController::setRequest(const PDFOpenRequest &request)
{
    m_request = request;
    isInLibrary = isOnPaper();
    if (request.searchText && !request.searchText->isEmpty())
        searchText = *request.searchText;
    m_searchDebounce.reset();
    performSearch();
    loadBookmarks();
}

QCoro::Task<> PDFViewerController::load(ReaderDocument &document)
{
    const QPointer self(this);
    m_loading.request_stop();
    m_loading = std::stop_source();
    const std::stop_token stop = m_loading.get_token();
    if (m_with.view.document() != &document)
        m_structureLosses = 0;
    m_with.view.setDocument(&document);
    pageCount = document.pageCount();
    if (!searchText.value().isEmpty())
        performSearch(); // there was nothing to search in before
    if (m_structureLosses >= kTriesOfFatalStructure)
        co_return;

    const auto outlining =
        document.ask(ReaderDocument::Priority::Ahead, stop,
                     [](PDFDocument &pdf, std::stop_token itsStop) { return pdf.outline(itsStop); });
    const auto labelling =
        document.ask(ReaderDocument::Priority::Ahead, stop,
                     [](PDFDocument &pdf, std::stop_token itsStop) { return pdf.pageLabels(itsStop); });
    const auto items = co_await outlining;
    if (!self || stop.stop_requested())
        co_return;
    if (!items && isEngineLoss(items.error()))
        ++m_structureLosses;
    outline = items ? outlineElements(*items) : QList<OutlineElement>();
    const auto labels = co_await labelling;
    if (!self || stop.stop_requested())
        co_return;
    if (items && !labels && isEngineLoss(labels.error()))
        ++m_structureLosses;
    pageLabels = labels ? *labels : PDFPageLabels();
}

void PDFViewerController::navigateFirst()
{
    m_firstNavigation = m_with.clock.callAfter(kFirstNavigationDelay, [this] { goToTarget(); });
}

QCoro::Task<> PDFViewerController::goToTarget()
{
    const QPointer self(this);
    if (!m_with.view.document())
        co_return;
    const PDFOpenRequest request = m_request.value_or(PDFOpenRequest());
    const qint64 target = request.page.value_or(1);
    const QString passage = request.highlightText.value_or(request.searchText.value_or(QString()));
    if (passage.isEmpty()) {
        if (target < 1 || target > pageCount)
            co_return;
        m_with.view.goToPage(target - 1);
    } else {
        auto showing = highlight(passage, target);
        const bool isThere = co_await showing;
        if (!self || !isThere)
            co_return;
    }
    m_with.view.forgetHistory(); // nobody has seen what it came from
}

void PDFViewerController::handlePageChange()
{
    if (!m_with.view.document() || !m_with.view.currentPageIndex())
        return;
    refreshNavigation();
    if (m_request)
        Q_EMIT pageShown(m_request->id, currentPage);
}

void PDFViewerController::refreshNavigation()
{
    const std::optional<qint64> page = m_with.view.currentPageIndex();
    if (!m_with.view.document() || !page)
        return;
    currentPage = *page + 1;
    canGoBack = m_with.view.canGoBack();
    canGoForward = m_with.view.canGoForward();
}

void PDFViewerController::handleHistoryChange()
{
    // Who goes somewhere no longer waits to be taken elsewhere.
    m_firstNavigation.reset();
    m_highlighting.request_stop();
    refreshNavigation();
}

void PDFViewerController::handleSelectionChange()
{
    const std::optional<PDFSelection> selection = m_with.view.currentSelection();
    hasSelection = selection && !selection->isEmpty();
}

void PDFViewerController::goToPageText(const QString &text)
{
    const std::optional<qint64> number = decimalInteger(text);
    if (!m_with.view.document() || !number || *number < 1 || *number > pageCount)
        return;
    m_with.view.goToPage(*number - 1);
}
