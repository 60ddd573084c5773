// The bookmarks of `PDFViewerController`.
#include "reader/PDFViewerController.h"

#include "base/Log.h"
#include "base/TextClasses.h"
#include "pdf/PDFSelection.h"
#include "reader/PDFView.h"
#include "store/NativeLibraryService.h"

#include <QPointer>
#include <qcorofuture.h>

QCoro::Task<> PDFViewerController::loadBookmarks()
{
    if (!isOnPaper()) {
        bookmarks = QList<Bookmark>();
        co_return;
    }
    const QPointer self(this);
    const QString paperId = *m_request->paperId;
    const QFuture<Result<QList<Bookmark>>> loading = m_with.library.bookmarksForPaper(paperId);
    const Result<QList<Bookmark>> loaded = co_await loading;
    if (!self || m_request->paperId != paperId)
        co_return;
    if (loaded)
        bookmarks = *loaded;
    else
        logLine(u"Failed to load bookmarks: " + loaded.error().message());
}

QCoro::Task<> PDFViewerController::removeBookmark(QString bookmarkId)
{
    const QFuture<Result<void>> removing = m_with.library.deleteBookmark(bookmarkId);
    const Result<void> removed = co_await removing; // the list hears of it through `BookmarkEvents`
    if (!removed)
        logLine(u"Failed to remove bookmark: " + removed.error().message());
}

void PDFViewerController::goToBookmark(const Bookmark &bookmark)
{
    highlight(bookmark.text, bookmark.page);
}

QCoro::Task<> PDFViewerController::bookmarkSelection(QString label)
{
    const std::optional<PDFSelection> selection = m_with.view.currentSelection();
    if (!selection || selection->pages().isEmpty() || selection->string().isEmpty() || !isOnPaper())
        co_return;
    const Bookmark bookmark{
        .id = newBookmarkId(),
        .paperId = *m_request->paperId,
        .text = selection->string(),
        .page = selection->pages().first() + 1,
        .label = trimmedHorizontally(label),
        .createdAt = toStoredTime(m_with.clock.now()),
    };
    const QFuture<Result<void>> storing = m_with.library.createBookmark(bookmark);
    const Result<void> stored = co_await storing;
    if (!stored)
        logLine(u"Failed to create bookmark: " + stored.error().message());
}
