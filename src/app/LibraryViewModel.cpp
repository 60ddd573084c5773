// Loading, searching, removing.
#include "app/LibraryViewModel.h"

#include "app/LibraryViewModelWork.h"
#include "base/Log.h"
#include "base/TextClasses.h"
#include "platform/Preferences.h"
#include "search/PaperFilter.h"
#include "store/NativeLibraryService.h"
#include "store/ReservedTags.h"
#include "store/SystemSearchPublisher.h"

#include <QPointer>
#include <QThread>
#include <algorithm>
#include <qcorofuture.h>

namespace
{

/// How long typing must pause before the library is searched.
constexpr std::chrono::milliseconds kSearchPause{400};

/// The longest list that is filtered on the main thread: there it takes less than 5 ms.
constexpr qsizetype kLongestFilteredAtOnce = 5000;

/// An import, a retag, a walk through folders, and loads beside them; most of their time they wait.
constexpr int kWorkers = 8;

/// Assigns a list that is known to differ, without a comparison that may take longer than a frame: to the
/// property it comes after an empty one, which nobody is told of.
void assignDifferent(QProperty<QList<Paper>> &property, const QList<Paper> &list)
{
    if (!list.isEmpty())
        property.setValueBypassingBindings({});
    property = list;
}

QStringList withoutReserved(const QStringList &tags)
{
    QStringList visible;
    std::copy_if(tags.begin(), tags.end(), std::back_inserter(visible),
                 [](const QString &tag) { return !isReservedTag(tag); });
    return visible;
}

} // namespace

LibraryViewModel::LibraryViewModel(Collaborators collaborators)
    : m_with(std::move(collaborators))
    , m_sidebarCounts(m_with.library, m_with.preferences)
{
    m_workers.setMaxThreadCount(kWorkers);
    observe();
}

LibraryViewModel::~LibraryViewModel()
{
    m_end.request_stop();
    m_workers.waitForDone();
}

void LibraryViewModel::observe()
{
    m_observers.push_back(queryText.addNotifier([this] { onQueryTextChanged(); }));
    m_observers.push_back(currentSidebarItem.addNotifier([this] {
        filterResults();
        loadPapers();
    }));
    m_observers.push_back(searchResults.addNotifier([this] { filterResults(); }));
    m_observers.push_back(showImportPicker.addNotifier([this] {
        // Once whoever closed the picker has started what was chosen in it.
        if (!showImportPicker)
            QMetaObject::invokeMethod(
                this, [this] { tellProblems(); }, Qt::QueuedConnection);
    }));
    visibleTags.setBinding([this] { return withoutReserved(allTags); });
}

void LibraryViewModel::requireMainThread() const
{
    if (QThread::currentThread() != thread())
        qFatal("LibraryViewModel: called outside the main thread");
}

QCoro::Task<> LibraryViewModel::loadPapers()
{
    requireMainThread();
    const QPointer self(this);
    const int load = ++m_latestLoad;
    ++m_loads;
    updateIsLoading();
    QFuture<LoadedPapers> loading = QtConcurrent::run(
        &m_workers, [this, item = currentSidebarItem.value(), shown = papers.value(),
                     selected = selectedPaper.value()] { return readPapers(item, shown, selected); });
    LoadedPapers loaded = co_await loading;
    if (!self)
        co_return;
    if (load == m_latestLoad)
        take(loaded);
    --m_loads;
    updateIsLoading();
    destroyElsewhere(std::move(loading), std::move(loaded));
}

/// On a worker.
LibraryViewModel::LoadedPapers LibraryViewModel::readPapers(const SidebarItem &item,
                                                            const QList<Paper> &shown,
                                                            const std::optional<Paper> &selected) const
{
    LoadedPapers loaded;
    loaded.papers = papersOf(item);
    loaded.isNews = loaded.papers && *loaded.papers != shown;
    if (selected) {
        loaded.selectedId = selected->id;
        loaded.selected = m_with.library.paperById(selected->id).result();
    }
    return loaded;
}

Result<QList<Paper>> LibraryViewModel::papersOf(const SidebarItem &item) const
{
    if (item.kind == SidebarItem::Kind::RecentlyImported) {
        const auto lastImport = m_with.preferences.text(QLatin1String(kLastImportDateKey));
        if (!lastImport)
            return QList<Paper>();
        return m_with.library.recentlyImportedPapers(*lastImport).result();
    }
    const std::optional<QString> tag = tagFilter(item);
    return (tag ? m_with.library.papersWithTag(*tag) : m_with.library.allPapers()).result();
}

void LibraryViewModel::take(const LoadedPapers &loaded)
{
    const std::optional<Paper> &selected = selectedPaper.value();
    if (selected && selected->id == loaded.selectedId && loaded.selected)
        selectedPaper = *loaded.selected;
    if (!loaded.papers) {
        errorMessage = loaded.papers.error().message();
        return;
    }
    if (loaded.isNews)
        replacePapers(*loaded.papers);
    m_workers.start([&publisher = m_with.publisher, list = *loaded.papers] { publisher.publish(list); });
}

/// Shows a list that is known to differ from the one shown.
void LibraryViewModel::replacePapers(const QList<Paper> &list)
{
    QList<Paper> old = papers.value();
    const bool wereAllShown = filteredPapers.value().isSharedWith(old);
    assignDifferent(papers, list);
    if (wereAllShown && !m_fieldFilters.hasFieldFilters())
        assignDifferent(filteredPapers, list);
    else
        filterPapers();
    filterResults();
    destroyElsewhere(std::move(old));
}

/// Loads that run have read what is out of date by now.
void LibraryViewModel::discardLoads()
{
    ++m_latestLoad;
    if (m_loads > 0)
        loadPapers();
}

void LibraryViewModel::updateIsLoading()
{
    isLoading = m_loads > 0 || m_searches > 0;
}

QCoro::Task<> LibraryViewModel::loadTags()
{
    requireMainThread();
    const QPointer self(this);
    QCoro::Task<> counting = m_sidebarCounts.load();
    const QFuture<Result<QStringList>> loading = m_with.library.allTagNames();
    const Result<QStringList> names = co_await loading;
    if (!self)
        co_return;
    if (names)
        allTags = *names;
    else
        logLine(u"Error rebuilding tags: " + names.error().message());
    co_await counting;
}

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

void LibraryViewModel::select(const std::optional<Paper> &paper)
{
    requireMainThread();
    selectedPaper = paper;
}

void LibraryViewModel::requestDelete(const Paper &paper)
{
    requireMainThread();
    confirmDeletePaper = paper;
}

QCoro::Task<> LibraryViewModel::deletePaper(Paper paper)
{
    requireMainThread();
    const QPointer self(this);
    const QFuture<Result<void>> deleting = m_with.library.deletePaper(paper.id);
    const Result<void> deleted = co_await deleting;
    if (!self)
        co_return;
    if (!deleted) {
        errorMessage = deleted.error().message();
        co_return;
    }
    forget(paper.id);
    QCoro::Task<> loading = loadTags();
    co_await loading;
}

/// Takes a paper that the library has no more out of what is shown.
void LibraryViewModel::forget(const QString &paperId)
{
    QList<Paper> rest = papers;
    const auto gone =
        std::find_if(rest.cbegin(), rest.cend(), [&](const Paper &paper) { return paper.id == paperId; });
    if (gone != rest.cend()) {
        rest.erase(gone);
        replacePapers(rest);
    }
    QList<SearchResult> results = searchResults;
    results.removeIf([&](const SearchResult &result) { return result.paperId == paperId; });
    searchResults = results;
    if (selectedPaper.value() && selectedPaper.value()->id == paperId)
        selectedPaper = std::nullopt;
    discardLoads();
}
