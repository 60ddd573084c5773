#pragma once

#include "base/Clock.h"
#include "base/Result.h"
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

class BookmarkEvents;
class NativeLibraryService;
class PDFView;
class ReaderDocument;

/// The state of one reader window, and what a person can do in it. Knows no widget: the view is reached
/// through `PDFView`. Main thread.
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
    ~PDFViewerController() override;

    QProperty<QList<OutlineElement>> outline;
    QProperty<QString> searchText; ///< a different value searches, after a pause
    QProperty<QList<PDFSearchResult>> searchResults;
    QProperty<bool> isSearching;
    QProperty<bool> hasSelection;
    QProperty<qint64> currentPage{1}; ///< 1-based
    QProperty<qint64> pageCount{0};
    QProperty<bool> canGoBack;
    QProperty<bool> canGoForward;
    QProperty<QList<Bookmark>> bookmarks;
    QProperty<QStringList> pageLabels; ///< by page index; empty when the document has none

    std::optional<PDFOpenRequest> request() const;
    /// Searches at once for the request's text.
    void setRequest(const PDFOpenRequest &request);

    /// Shows an open document.
    void load(ReaderDocument &document);
    /// Once the document is shown: goes to the request's page or passage, or to page 1 without a request.
    QCoro::Task<> navigateFirst();

    QCoro::Task<> performSearch();
    /// Shows a passage on a 1-based page, lit when it is found, else the page.
    QCoro::Task<> highlight(QString text, qint64 pageNumber);
    /// Steps through the hits; answers nothing when there are none.
    void goToNextHit();
    void goToPreviousHit();
    QProperty<int> currentHit{-1}; ///< index into `searchResults`, or -1
    void refreshNavigation();
    /// The page field's text; anything that is no page of the document changes nothing.
    void goToPageText(const QString &text);

    QCoro::Task<> loadBookmarks();
    QCoro::Task<> removeBookmark(QString bookmarkId);
    /// Stores the view's selection; does nothing where there is none, or outside the library.
    QCoro::Task<> bookmarkSelection(QString label);

Q_SIGNALS:
    /// The window of `requestId` shows another page now (1-based); for the session.
    void pageShown(const QUuid &requestId, qint64 pageNumber);
};
