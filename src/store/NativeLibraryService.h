#pragma once

#include "base/Result.h"
#include "store/Bookmark.h"
#include "store/BookmarkEvents.h"
#include "store/Paper.h"
#include "store/PaperCounts.h"
#include "store/Urgency.h"

#include <QFuture>
#include <QList>
#include <QSet>
#include <QStringList>
#include <functional>
#include <optional>

class Database;
class DatabaseManager;
class SystemSearchPublisher;

/// Which fields of a paper an edit changes; an absent field keeps its stored value.
struct PaperEdit {
    std::optional<QString> title;
    std::optional<QString> authors;
    std::optional<qint64> year;
};

/// Every query and change of papers, tags and bookmarks. Stateless; call from any thread. Each call is one
/// operation of the database thread; all are of the one urgency that the service was made with.
///
/// Errors: those of `DatabaseManager`, and domain "NativeLibraryService" code 1 when a paper is missing.
class NativeLibraryService
{
public:
    /// Changes of papers are announced to `publisher` (on the database thread), of bookmarks to
    /// `bookmarkEvents`. All must outlive the service and its futures.
    NativeLibraryService(DatabaseManager &db, SystemSearchPublisher &publisher,
                         BookmarkEvents &bookmarkEvents = BookmarkEvents::shared(),
                         Urgency urgency = Urgency::PersonWaits);

    /// Every paper, by title then authors, case ignored.
    QFuture<Result<QList<Paper>>> allPapers();
    /// The papers that carry `tag`, each with all its tags, in the order of `allPapers`.
    QFuture<Result<QList<Paper>>> papersWithTag(const QString &tag);
    /// The papers among `ids` that exist, in no particular order.
    QFuture<Result<QList<Paper>>> papersByIds(const QStringList &ids);
    /// The papers indexed at or after `cutOff` (stored time form), newest first.
    QFuture<Result<QList<Paper>>> recentlyImportedPapers(const QString &cutOff);
    /// Counts without reading papers; those indexed at or after `cutOff` (stored time form) are the recently
    /// imported ones, of which there are none without it.
    QFuture<Result<PaperCounts>> paperCounts(const std::optional<QString> &cutOff);
    QFuture<Result<std::optional<Paper>>> paperById(const QString &id);
    QFuture<Result<std::optional<Paper>>> paperByContentHash(const QString &digest);
    /// Of the paper's file at its import; nothing when that was not known, or the paper is not.
    QFuture<Result<std::optional<QString>>> contentHashOfPaper(const QString &id);
    QFuture<Result<std::optional<Paper>>> paperByFilepath(const QString &filepath);
    /// The ids that begin with `prefix`, ascending.
    QFuture<Result<QStringList>> paperIdsWithPrefix(const QString &prefix);
    QFuture<Result<Paper>> updateFilepath(const QString &id, const QString &filepath);
    QFuture<Result<Paper>> updatePaper(const QString &id, const PaperEdit &edit);
    QFuture<Result<QSet<QString>>> allFilepaths();
    /// Removes the paper, its tags, bookmarks, full-text rows and cover file. Never the PDF.
    QFuture<Result<void>> deletePaper(const QString &id);

    /// Gives the paper a tag of the user's, in place of "Untagged" if it has a tag to show then.
    QFuture<Result<void>> tagPaper(const QString &paperId, const QString &tag);
    QFuture<Result<void>> addTag(const QString &paperId, const QString &tag);
    QFuture<Result<void>> removeTag(const QString &paperId, const QString &tag);
    /// Every tag in use or defined, ascending by code point; reserved names included.
    QFuture<Result<QStringList>> allTagNames();
    /// Defines a tag, its name trimmed of horizontal white space. A blank name is the caller's to refuse.
    QFuture<Result<void>> createTag(const QString &name);

    /// By page, and on a page by creation time.
    QFuture<Result<QList<Bookmark>>> bookmarksForPaper(const QString &paperId);
    /// Those of any paper whose ids begin with `prefix`, ascending by id.
    QFuture<Result<QList<Bookmark>>> bookmarksWithIdPrefix(const QString &prefix);
    /// Stores a bookmark and tells `BookmarkEvents`; `createdAt` in stored time form.
    QFuture<Result<void>> createBookmark(const Bookmark &bookmark);
    /// Removes a bookmark, known or not, and tells `BookmarkEvents` when it was known.
    QFuture<Result<void>> deleteBookmark(const QString &bookmarkId);

private:
    QFuture<Result<void>> changeTags(const QString &paperId, std::function<Result<void>(Database &)> change);

    DatabaseManager &m_db;
    SystemSearchPublisher &m_publisher;
    BookmarkEvents &m_bookmarkEvents;
    Urgency m_urgency;
};
