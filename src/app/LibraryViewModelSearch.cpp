// Searching and filtering.
#include "app/LibraryViewModelWork.h"
#include "base/TextClasses.h"
#include "search/PaperFilter.h"

#include <QPointer>
#include <qcorofuture.h>
#include <utility>

namespace
{

/// How long typing must pause before the library is searched.
constexpr std::chrono::milliseconds kSearchPause{400};

/// The longest list that is filtered on the main thread: there it takes less than 5 ms.
constexpr qsizetype kLongestFilteredAtOnce = 5000;

} // namespace

void LibraryViewModel::onQueryTextChanged()
{
    ParsedQuery query(queryText);
    const QString words = trimmedHorizontally(std::exchange(query.fullText, {}));
    if (query != m_fieldFilters) {
        m_fieldFilters = query;
        filterPapers();
        filterResults();
    }
    m_searchDebounce.reset();
    if (words.isEmpty())
        leaveSearch();
    else
        m_searchDebounce = m_with.clock.callAfter(kSearchPause, [this, words] { performSearch(words); });
}

void LibraryViewModel::leaveSearch()
{
    ++m_searchMode;
    m_searches = 0;
    isSearching = false;
    searchResults = QList<SearchResult>();
    updateIsLoading();
}

QCoro::Task<> LibraryViewModel::performSearch(QString query)
{
    requireMainThread();
    const QPointer self(this);
    const int mode = m_searchMode;
    ++m_searches;
    isSearching = true;
    updateIsLoading();
    const QFuture<Result<QList<SearchResult>>> searching = m_with.search(query);
    const Result<QList<SearchResult>> found = co_await searching;
    // Of two searches the one that answers last wins, whichever began first.
    if (!self || mode != m_searchMode)
        co_return;
    if (found)
        searchResults = *found;
    else
        errorMessage = found.error().message();
    --m_searches;
    updateIsLoading();
}

void LibraryViewModel::filterPapers()
{
    m_stopFiltering.request_stop();
    m_stopFiltering = {};
    if (m_fieldFilters.hasFieldFilters() && papers.value().size() > kLongestFilteredAtOnce) {
        filterOnWorker(m_fieldFilters);
        return;
    }
    QList<Paper> old = filteredPapers;
    filteredPapers = ::filteredPapers(papers, m_fieldFilters);
    destroyElsewhere(std::move(old));
}

QCoro::Task<> LibraryViewModel::filterOnWorker(ParsedQuery query)
{
    const QPointer self(this);
    const std::stop_token stop = m_stopFiltering.get_token();
    QFuture<FilteredPapers> filtering =
        QtConcurrent::run(&m_workers, [stop, query, list = papers.value(), shown = filteredPapers.value()] {
            const QList<Paper> passing = ::filteredPapers(list, query, stop);
            return FilteredPapers{.papers = passing, .isNews = passing != shown};
        });
    FilteredPapers filtered = co_await filtering;
    if (!self)
        co_return;
    QList<Paper> old = filteredPapers;
    if (filtered.isNews && !stop.stop_requested())
        assignDifferent(filteredPapers, filtered.papers);
    destroyElsewhere(std::move(old), std::move(filtered), std::move(filtering));
}

void LibraryViewModel::filterResults()
{
    filteredSearchResults =
        filteredResults(searchResults, m_fieldFilters, papers,
                        currentSidebarItem.value().isTag() ? ListedPapers::OneTag : ListedPapers::Everything);
}

void LibraryViewModel::requestSearchFocus()
{
    requireMainThread();
    searchFocusRequest = searchFocusRequest + 1;
}
