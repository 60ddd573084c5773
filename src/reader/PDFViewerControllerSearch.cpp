// Hits and passages.
#include "reader/PDFViewerController.h"

#include "base/Log.h"
#include "reader/PDFView.h"
#include "reader/PassageFinder.h"
#include "reader/ReaderDocument.h"

#include <QPointer>
#include <algorithm>
#include <qcorofuture.h>

namespace
{
/// How long typing must pause before the paper is searched.
constexpr std::chrono::milliseconds kSearchPause{400};

int indexOfFirst(const QList<PDFSearchResult> &hits, const std::function<bool(const PDFSearchResult &)> &isIt)
{
    const auto hit = std::find_if(hits.begin(), hits.end(), isIt);
    return hit == hits.end() ? -1 : int(hit - hits.begin());
}
} // namespace

void PDFViewerController::scheduleSearch()
{
    m_searchDebounce = m_with.clock.callAfter(kSearchPause, [this] {
        m_searchDebounce.reset();
        performSearch();
    });
}

void PDFViewerController::submitSearch()
{
    if (!m_searchDebounce) {
        goToNextHit();
        return;
    }
    m_searchDebounce.reset();
    performSearch();
}

QCoro::Task<> PDFViewerController::performSearch()
{
    const QPointer self(this);
    m_search.request_stop();
    m_search = std::stop_source();
    const std::stop_token stop = m_search.get_token();
    if (!isOnPaper() || searchText.value().isEmpty() || !m_with.view.document()) {
        isSearching = false;
        showHits({});
        co_return;
    }
    isSearching = true;
    const QFuture<Result<QList<Passage>>> searching = m_with.searchInPaper(*m_request->paperId, searchText);
    const Result<QList<Passage>> found = co_await searching;
    if (!self || stop.stop_requested())
        co_return;
    if (found)
        showHits(*found);
    else
        logLine(u"Reader Search Error: " + found.error().message());
    isSearching = false;
}

void PDFViewerController::showHits(const QList<Passage> &passages)
{
    QList<PDFSearchResult> hits;
    for (const Passage &passage : passages)
        hits.append({QUuid::createUuid(), passage.text, passage.page - 1});
    currentHit = -1; // before the hits that it counts are others
    searchResults = hits;
    // Who came here for one of the hits goes on from it.
    if (m_request && m_request->page && m_request->searchText == searchText.value())
        currentHit = indexOfFirst(
            hits, [&](const PDFSearchResult &hit) { return hit.pageIndex + 1 == m_request->page; });
}

QCoro::Task<bool> PDFViewerController::highlight(QString text, qint64 pageNumber)
{
    const QPointer self(this);
    m_highlighting.request_stop();
    m_highlighting = std::stop_source();
    const std::stop_token stop = m_highlighting.get_token();
    ReaderDocument *document = m_with.view.document();
    if (!document || pageNumber < 1 || pageNumber > document->pageCount())
        co_return false;
    const qint64 pageIndex = pageNumber - 1;
    const auto finding = document->ask(
        ReaderDocument::Priority::Visible, stop,
        [text, pageIndex](PDFDocument &pdf, std::stop_token itsStop) -> Result<std::optional<PDFSelection>> {
            const Result<PDFPageText> page = pdf.placedText(pageIndex, itsStop);
            if (!page)
                return page.error();
            return findPassage(text, pageIndex, *page, itsStop);
        });
    const Result<std::optional<PDFSelection>> found = co_await finding;
    if (!self || stop.stop_requested() || m_with.view.document() != document)
        co_return false;
    if (!found || !*found) {
        m_with.view.goToPage(pageIndex);
        co_return true;
    }
    m_with.view.setCurrentSelection(**found, PDFView::Animate::Yes);
    m_with.view.goToSelection(**found);
    co_return true;
}

void PDFViewerController::goToHit(int index)
{
    const QList<PDFSearchResult> hits = searchResults;
    if (index < 0 || index >= hits.size())
        return;
    currentHit = index;
    highlight(hits[index].snippet, hits[index].pageIndex + 1);
}

void PDFViewerController::goToNextHit()
{
    const QList<PDFSearchResult> &hits = searchResults.value();
    if (currentHit >= 0) {
        goToHit(currentHit + 1 < hits.size() ? currentHit + 1 : 0);
        return;
    }
    const int ahead =
        indexOfFirst(hits, [this](const PDFSearchResult &hit) { return hit.pageIndex + 1 >= currentPage; });
    goToHit(std::max(ahead, 0));
}

void PDFViewerController::goToPreviousHit()
{
    const QList<PDFSearchResult> &hits = searchResults.value();
    if (currentHit > 0) {
        goToHit(currentHit - 1);
        return;
    }
    const int beyond =
        indexOfFirst(hits, [this](const PDFSearchResult &hit) { return hit.pageIndex + 1 > currentPage; });
    goToHit(currentHit < 0 && beyond > 0 ? beyond - 1 : int(hits.size()) - 1);
}
