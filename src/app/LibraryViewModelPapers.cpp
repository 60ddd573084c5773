// One paper's tags, attributes and bookmarks.
#include "app/LibraryViewModelWork.h"
#include "base/TextClasses.h"
#include "store/DatabaseManager.h"
#include "store/NativeLibraryService.h"
#include "store/ReservedTags.h"

#include <QPointer>
#include <qcorofuture.h>

QCoro::Task<> LibraryViewModel::addTag(QString paperId, QString tag)
{
    tag = trimmedHorizontally(tag);
    if (refuseTag(tag))
        co_return;
    const QFuture<Result<void>> tagging = m_with.library.tagPaper(paperId, tag);
    QCoro::Task<> following = afterPaperChange(tagging, paperId);
    co_await following;
}

QCoro::Task<> LibraryViewModel::removeTag(QString paperId, QString tag)
{
    requireMainThread();
    const QFuture<Result<void>> removing = m_with.library.removeTag(paperId, tag);
    QCoro::Task<> following = afterPaperChange(removing, paperId);
    co_await following;
}

QCoro::Task<> LibraryViewModel::setCurrentlyReading(QString paperId, bool isReading)
{
    requireMainThread();
    const auto tag = QLatin1String(kCurrentlyReadingTag);
    const QFuture<Result<void>> changing =
        isReading ? m_with.library.addTag(paperId, tag) : m_with.library.removeTag(paperId, tag);
    QCoro::Task<> following = afterPaperChange(changing, paperId);
    co_await following;
}

QCoro::Task<> LibraryViewModel::updatePaper(QString paperId, PaperEdit edit)
{
    requireMainThread();
    QFuture<Result<Paper>> updating = m_with.library.updatePaper(paperId, edit);
    const QFuture<Result<void>> changing = updating.then([](const Result<Paper> &updated) {
        return updated ? Result<void>() : Result<void>(updated.error());
    });
    QCoro::Task<> following = afterPaperChange(changing, paperId);
    co_await following;
}

/// Waits for a change of the paper, then shows its current state everywhere: where it is selected at once.
QCoro::Task<> LibraryViewModel::afterPaperChange(QFuture<Result<void>> changing, QString paperId)
{
    const QPointer self(this);
    const Result<void> done = co_await changing;
    if (!self)
        co_return;
    if (!done) {
        errorMessage = done.error().message();
        co_return;
    }
    discardLoads();
    const QFuture<Result<std::optional<Paper>>> reading = m_with.library.paperById(paperId);
    const Result<std::optional<Paper>> paper = co_await reading;
    if (!self)
        co_return;
    if (paper && selectedPaper.value() && selectedPaper.value()->id == paperId)
        selectedPaper = *paper;
    QCoro::Task<> reloading = reload();
    co_await reloading;
}

QCoro::Task<> LibraryViewModel::loadBookmarks(QString paperId)
{
    requireMainThread();
    const QPointer self(this);
    m_bookmarksOf = paperId;
    const QFuture<Result<QList<Bookmark>>> loading = m_with.library.bookmarksForPaper(paperId);
    const Result<QList<Bookmark>> loaded = co_await loading;
    if (!self || m_bookmarksOf != paperId)
        co_return;
    if (loaded)
        bookmarks = *loaded;
    else
        errorMessage = loaded.error().message();
}

QCoro::Task<> LibraryViewModel::deleteBookmark(QString bookmarkId)
{
    requireMainThread();
    const QPointer self(this);
    const QFuture<Result<void>> deleting = m_with.library.deleteBookmark(bookmarkId);
    const Result<void> deleted = co_await deleting;
    if (!self)
        co_return;
    if (!deleted) {
        errorMessage = QString(u"Failed to remove bookmark: " + deleted.error().message());
        co_return;
    }
    QCoro::Task<> loading = loadBookmarks(m_bookmarksOf);
    co_await loading;
}
