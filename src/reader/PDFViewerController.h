#pragma once

#include "base/Clock.h"
#include "base/Result.h"
#include "pdf/PDFPageLabels.h"
#include "reader/OutlineElement.h"
#include "reader/PDFOpenRequest.h"
#include "reader/PDFSearchResult.h"
#include "store/Bookmark.h"
#include "store/Passage.h"

#include <QFuture>
#include <QObject>
#include <QProperty>
#include <functional>
#include <memory>
#include <optional>
#include <qcorotask.h>
#include <stop_token>
#include <vector>

class BookmarkEvents;
class NativeLibraryService;
class PDFView;
class ReaderDocument;

/// The state of one reader window, and what a person can do in it. Knows no widget: the view is reached
/// through `PDFView`. Main thread.
///
/// Its operations lie in three files: PDFViewerController.cpp (the document and its pages),
/// PDFViewerControllerSearch.cpp (hits and passages) and PDFViewerControllerBookmarks.cpp.
class PDFViewerController : public QObject
{
    Q_OBJECT

public:
    using SearchInPaper =
        std::function<QFuture<Result<QList<Passage>>>(const QString &paperId, const QString &query)>;

    /// All must outlive the controller.
    struct Collaborators {
        PDFView &view;
        NativeLibraryService &library;
        BookmarkEvents &bookmarkEvents;
        const Clock &clock;
        SearchInPaper searchInPaper;
    };
    explicit PDFViewerController(Collaborators collaborators, QObject *parent = nullptr);
    /// What is still awaited changes nothing any more.
    ~PDFViewerController() override;

    QProperty<QList<OutlineElement>> outline;
    QProperty<QString> searchText; ///< a different value searches, after a pause
    QProperty<QList<PDFSearchResult>> searchResults;
    QProperty<bool> isSearching;
    QProperty<bool> isInLibrary; ///< only papers of the library can be searched and bookmarked
    QProperty<bool> hasSelection;
    QProperty<qint64> currentPage{1}; ///< 1-based
    QProperty<qint64> pageCount{0};   ///< as the document claims
    QProperty<bool> canGoBack;
    QProperty<bool> canGoForward;
    QProperty<QList<Bookmark>> bookmarks;
    QProperty<PDFPageLabels> pageLabels; ///< empty when the document has none
    QProperty<int> currentHit{-1};       ///< index into `searchResults`, or -1

    const std::optional<PDFOpenRequest> &request() const { return m_request; }
    /// Searches at once for the request's text, and loads the bookmarks.
    void setRequest(const PDFOpenRequest &request);

    /// Shows an open document: its pages at once, the outline and the labels as soon as they are read. To be
    /// called again when the document was opened again.
    QCoro::Task<> load(ReaderDocument &document);
    /// Once the document is shown: goes, after a moment, to the request's page or passage, or to page 1
    /// without a request.
    void navigateFirst();

    /// Searches for `searchText` now. Without a paper of the library there is nothing to be found.
    QCoro::Task<> performSearch();
    /// Return in the search field: searches at once for what was typed, or else goes to the next hit.
    void submitSearch();
    /// Shows a passage on a 1-based page, lit when it is found, else the page. Answers false when there is no
    /// such page, or a person went elsewhere meanwhile.
    QCoro::Task<bool> highlight(QString text, qint64 pageNumber);
    /// Shows a hit, which becomes the current one. Without such a hit nothing happens.
    void goToHit(int index);
    /// Step through the hits, around the end. From no hit they step to the first one from the current page
    /// on, or the last one up to it.
    void goToNextHit();
    void goToPreviousHit();

    void refreshNavigation();
    /// The page field's text; anything that is no page of the document changes nothing.
    void goToPageText(const QString &text);

    QCoro::Task<> loadBookmarks();
    QCoro::Task<> removeBookmark(QString bookmarkId);
    /// Shows the bookmark's page with its text lit.
    void goToBookmark(const Bookmark &bookmark);
    /// Stores the view's selection; does nothing where there is none, or outside the library.
    QCoro::Task<> bookmarkSelection(QString label);

Q_SIGNALS:
    /// The window of `requestId` shows another page now (1-based); for the session.
    void pageShown(const QUuid &requestId, qint64 pageNumber);

private:
    void observeView();
    void handlePageChange();
    void handleSelectionChange();
    void handleHistoryChange();
    QCoro::Task<> goToTarget();
    void scheduleSearch();
    void showHits(const QList<Passage> &passages);
    bool isOnPaper() const { return m_request && m_request->paperId; }

    Collaborators m_with;
    std::optional<PDFOpenRequest> m_request;
    std::unique_ptr<PendingCall> m_searchDebounce;
    std::unique_ptr<PendingCall> m_firstNavigation;
    std::stop_source m_loading;      ///< of the latest document
    std::stop_source m_search;       ///< of the latest search
    int m_structureLosses = 0;       ///< of the engine, while it read outline or labels
    std::stop_source m_highlighting; ///< of the latest passage
    std::vector<QPropertyNotifier> m_observers;
};
