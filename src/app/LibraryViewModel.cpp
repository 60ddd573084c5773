// Loading and removing.
#include "app/LibraryViewModel.h"

#include "app/LibraryViewModelWork.h"
#include "base/Log.h"
#include "store/NativeLibraryService.h"
#include "store/ReservedTags.h"
#include "store/SystemSearchPublisher.h"

#include <QPointer>
#include <QThread>
#include <algorithm>
#include <qcorofuture.h>

namespace
{

/// An import, a retag, a walk through folders, and loads beside them; most of their time they wait.
constexpr int kWorkers = 8;

/// Without the first paper of this id.
QList<Paper> withoutPaper(QList<Paper> papers, const QString &id)
{
    const auto gone =
        std::find_if(papers.cbegin(), papers.cend(), [&](const Paper &paper) { return paper.id == id; });
    if (gone != papers.cend())
        papers.erase(gone);
    return papers;
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
    visibleTags.setBinding([this] {
        QStringList tags = allTags;
        tags.removeIf(isReservedTag);
        return tags;
    });
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
    loaded.papers = papersOf(item, m_with.library, m_with.preferences);
    loaded.isWholeLibrary = item.kind == SidebarItem::Kind::All;
    loaded.isNews = loaded.papers && *loaded.papers != shown;
    if (selected) {
        loaded.selectedId = selected->id;
        loaded.selected = m_with.library.paperById(selected->id).result();
    }
    return loaded;
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
    m_workers.start([&publisher = m_with.publisher, list = *loaded.papers, isAll = loaded.isWholeLibrary] {
        isAll ? publisher.publishLibrary(list) : publisher.publish(list);
    });
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

void LibraryViewModel::select(const std::optional<Paper> &paper)
{
    requireMainThread();
    selectedPaper = paper;
    // A search result stands for its paper and knows nothing of these.
    if (paper && paper->authors.isEmpty() && !paper->year && paper->pageCount == 0 && paper->tags.isEmpty())
        readSelected(paper->id);
}

QCoro::Task<> LibraryViewModel::readSelected(QString paperId)
{
    const QPointer self(this);
    const QFuture<Result<std::optional<Paper>>> reading = m_with.library.paperById(paperId);
    const Result<std::optional<Paper>> paper = co_await reading;
    if (!self || !paper || !*paper)
        co_return;
    if (selectedPaper.value() && selectedPaper.value()->id == paperId)
        selectedPaper = *paper;
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
    QCoro::Task<> forgetting = forget(paper.id);
    QCoro::Task<> loading = loadTags();
    co_await forgetting;
    co_await loading;
    if (self)
        leaveVanishedTag();
}

/// Takes a paper that the library has no more out of what is shown.
QCoro::Task<> LibraryViewModel::forget(QString paperId)
{
    const QPointer self(this);
    if (selectedPaper.value() && selectedPaper.value()->id == paperId)
        selectedPaper = std::nullopt;
    QList<SearchResult> results = searchResults;
    results.removeIf([&](const SearchResult &result) { return result.paperId == paperId; });
    searchResults = results;
    discardLoads();
    QList<Paper> shown;
    QList<Paper> rest;
    do { // again, if a load or another removal came first
        shown = papers;
        const QFuture<QList<Paper>> removing =
            QtConcurrent::run(&m_workers, [shown, paperId] { return withoutPaper(shown, paperId); });
        rest = co_await removing;
        if (!self)
            co_return;
    } while (!papers.value().isSharedWith(shown));
    if (rest.size() < shown.size())
        replacePapers(rest);
    destroyElsewhere(std::move(shown));
}
