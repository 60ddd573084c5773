#pragma once

#include "app/SidebarCounts.h"
#include "app/SidebarItem.h"
#include "base/Clock.h"
#include "base/Result.h"
#include "search/ParsedQuery.h"
#include "store/Bookmark.h"
#include "store/IndexFilesResponse.h"
#include "store/Paper.h"
#include "store/SearchResult.h"

#include <QFuture>
#include <QMap>
#include <QObject>
#include <QProperty>
#include <QStringList>
#include <QThreadPool>
#include <functional>
#include <memory>
#include <optional>
#include <qcorotask.h>
#include <stop_token>
#include <vector>

class DatabaseManager;
class ImportFlow;
class NativeLibraryService;
class Preferences;
class RetagFlow;
class Services;
class SystemSearchPublisher;
struct ImportOutcome;
struct ImportProgress;
struct PaperEdit;
struct RetagCount;

/// The state of the library window, and what a person can do in it. Widgets read and observe the fields and
/// call the operations; nothing here knows a widget. A field announces only a change to a different value.
///
/// Belongs to the main thread: every field and operation, and the process dies of an assertion elsewhere.
/// Long work runs on other threads; what it finds is assigned on the main thread.
///
/// Its operations lie in five files: LibraryViewModel.cpp (loading, removing), LibraryViewModelSearch.cpp,
/// LibraryViewModelImport.cpp, LibraryViewModelTags.cpp and LibraryViewModelPapers.cpp (one paper's tags,
/// attributes and bookmarks). LibraryViewModelWork.h is theirs alone.
class LibraryViewModel : public QObject
{
public:
    using Search = std::function<QFuture<Result<QList<SearchResult>>>(const QString &query)>;
    /// Shows the panel that chooses files and folders, and hands over what was chosen; says nothing when the
    /// panel is dismissed.
    using OpenPanel = std::function<void(std::function<void(const QStringList &locations)> chosen)>;

    /// All must outlive the view model.
    struct Collaborators {
        DatabaseManager &db;
        NativeLibraryService &library;
        SystemSearchPublisher &publisher;
        Preferences &preferences;
        const Clock &clock;
        ImportFlow &importFlow;
        RetagFlow &retagFlow;
        Search search;

        static Collaborators of(Services &services);
    };

    /// Empty, with nothing loaded: call `loadPapers` and `loadTags`.
    explicit LibraryViewModel(Collaborators collaborators);
    /// Stops an import or a retag that still runs, and waits for its running jobs to abandon their work.
    ~LibraryViewModel() override;

    // What the window shows.
    QProperty<QList<Paper>> papers;               ///< of the selected sidebar item, in the store's order
    QProperty<QList<SearchResult>> searchResults; ///< of the last search, best first
    QProperty<std::optional<Paper>> selectedPaper;
    QProperty<QString> queryText;              ///< the search field's text; a change searches, after a pause
    QProperty<bool> isSearching;               ///< a query is in force: results are shown instead of the grid
    QProperty<bool> isLoading;                 ///< a load or a search is running
    QProperty<SidebarItem> currentSidebarItem; ///< a change loads its papers
    QProperty<QStringList> allTags;            ///< ascending; reserved names included
    QProperty<std::optional<QString>> errorMessage;
    QProperty<bool> isImporting;
    QProperty<std::optional<IndexFilesResponse>> lastImportResult;
    QProperty<std::optional<Paper>> confirmDeletePaper; ///< awaits confirmation of its removal
    QProperty<bool> trashTargeted;                      ///< a dragged paper hovers over the trash
    QProperty<double> importProgress;                   ///< 0 to 1
    QProperty<QString> importStatus;
    QProperty<int> importingCount; ///< files done
    QProperty<int> importingTotal;
    QProperty<bool> isCancellingImport;
    QProperty<std::optional<QString>> scrollToId; ///< the grid scrolls to this paper, then clears it
    QProperty<QString> importTimeEstimate;        ///< empty until it can be told
    QProperty<QList<Bookmark>> bookmarks;
    QProperty<int> searchFocusRequest;     ///< counts up: each step asks for focus in the search field
    QProperty<QStringList> discoveredPDFs; ///< absolute paths to choose among, ascending by file name
    QProperty<bool> showImportPicker;
    QProperty<bool> isRetagging;
    QProperty<double> retagProgress; ///< 0 to 1
    QProperty<int> retagCount;
    QProperty<int> retagTotal;
    QProperty<std::optional<QString>> retagResult;

    // Worked out from the above.
    QProperty<QStringList> visibleTags; ///< without reserved names
    /// Those of `papers` that pass the query's field filters. Of a long list the filters are worked out on
    /// another thread, and this follows some tens of milliseconds later.
    QProperty<QList<Paper>> filteredPapers;
    QProperty<QList<SearchResult>> filteredSearchResults; ///< likewise, see `filteredResults`
    SidebarCounts &sidebarCounts() { return m_sidebarCounts; }

    // Loading and searching.
    QCoro::Task<> loadPapers();
    QCoro::Task<> loadTags(); ///< and the sidebar's counts
    QCoro::Task<> performSearch(QString query);
    void requestSearchFocus();
    void select(const std::optional<Paper> &paper);

    // Removing.
    void requestDelete(const Paper &paper);
    QCoro::Task<> deletePaper(Paper paper);

    // Importing. Locations are absolute paths.
    void setOpenPanel(OpenPanel panel);
    void chooseAndImport();
    /// Looks through files and folders that were chosen or dropped, off the main thread, then goes on with
    /// `importURLs`.
    QCoro::Task<> importLocations(QStringList locations);
    QCoro::Task<> importURLs(QStringList candidates, bool containsFolder);
    void importSelected(const QStringList &paths);
    void startImport(const QStringList &paths); ///< does nothing while an import runs
    void cancelImport();

    // Tags of many papers. Names are trimmed; a blank name does nothing.
    QCoro::Task<> createTag(QString name);
    QCoro::Task<> renameTag(QString oldName, QString newName);
    QCoro::Task<> deleteTag(QString name);
    QCoro::Task<> tagVisiblePapers(QString name);
    QCoro::Task<> removeTagFromVisiblePapers(QString name);
    QStringList tagsOnVisiblePapers() const; ///< without reserved names, ascending
    QCoro::Task<> retagLibrary();

    // One paper. Each reloads what it changed; a failure becomes `errorMessage`.
    QCoro::Task<> addTag(QString paperId, QString tag);
    QCoro::Task<> removeTag(QString paperId, QString tag);
    QCoro::Task<> setCurrentlyReading(QString paperId, bool isReading);
    QCoro::Task<> updatePaper(QString paperId, PaperEdit edit);

    // Bookmarks of the paper that the detail panel shows.
    QCoro::Task<> loadBookmarks(QString paperId);
    QCoro::Task<> deleteBookmark(QString bookmarkId);

private:
    struct LoadedPapers;
    struct FilteredPapers;

    void requireMainThread() const;
    void observe();
    template <typename... T> void destroyElsewhere(T... things);

    LoadedPapers readPapers(const SidebarItem &item, const QList<Paper> &shown,
                            const std::optional<Paper> &selected) const;
    void take(const LoadedPapers &loaded);
    void replacePapers(const QList<Paper> &list);
    void discardLoads();
    void updateIsLoading();
    QCoro::Task<> forget(QString paperId);
    QCoro::Task<> readSelected(QString paperId);

    void onQueryTextChanged();
    void leaveSearch();
    void filterPapers();
    QCoro::Task<> filterOnWorker(ParsedQuery query);
    void filterResults();

    bool refuseImport();
    QCoro::Task<> runImport(QStringList paths);
    void foldIn(const ImportProgress &progress);
    void finishImport(const ImportOutcome &outcome);
    void tellProblems();

    QCoro::Task<> reload();
    void leaveVanishedTag();
    bool refuseTag(const QString &name);
    QCoro::Task<> afterTagChange(QFuture<Result<void>> changing, QString changed, SidebarItem successor);
    QCoro::Task<> changeOnWorker(std::function<void(std::stop_token stop)> change);
    void foldIn(const RetagCount &count);

    QCoro::Task<> afterPaperChange(QFuture<Result<void>> changing, QString paperId);

    Collaborators m_with;
    SidebarCounts m_sidebarCounts;
    OpenPanel m_openPanel;
    std::unique_ptr<PendingCall> m_searchDebounce; ///< the search that waits for typing to pause
    ParsedQuery m_fieldFilters;                    ///< of the query text; its free text is left out
    std::stop_source m_stopFiltering;              ///< what filters is out of date
    int m_loads = 0;                               ///< that have not answered yet
    int m_latestLoad = 0;                          ///< the one whose answer counts
    int m_searches = 0;                            ///< of the query in force, not answered yet
    int m_searchMode = 0;                          ///< counts the times that searching was left
    QString m_bookmarksOf;                         ///< the paper whose bookmarks were asked for last
    QMap<QString, QString> m_problems;             ///< found by looking for files, not told yet
    std::stop_source m_cancelImport;               ///< begin no more files
    std::stop_source m_end;                        ///< abandon everything: the view model dies
    QThreadPool m_workers;
    std::vector<QPropertyNotifier> m_observers;
};

/// Why `name` cannot be a tag of the user's; empty when it can. For people.
QString tagNameProblem(const QString &name);
