#include "app/Services.h"
#include "base/Clock.h"
#include "base/TextClasses.h"
#include "cli/BookmarkMarkdown.h"
#include "cli/Commands.h"
#include "cli/Output.h"
#include "cli/PaperLookup.h"
#include "cli/PaperPrinting.h"
#include "cli/RecordLists.h"
#include "store/NativeLibraryService.h"

#include <QJsonObject>

namespace
{

void listBookmarks(const Paper &paper, const QList<Bookmark> &bookmarks, const Output &output)
{
    if (output.isJson())
        return output.json(asJson(bookmarks));
    printPaper(paper, output);
    for (const Bookmark &bookmark : bookmarks)
        printBookmark(bookmark, output);
    if (bookmarks.isEmpty())
        output.line(QStringLiteral("No bookmarks."));
}

} // namespace

ExitStatus runBookmarks(const BookmarksRequest &request, const CommandContext &context)
{
    const Result<Paper> paper = findPaper(request.paperId, context);
    if (!paper)
        return fail(paper.error(), context);
    const Result<QList<Bookmark>> bookmarks =
        context.services.library().bookmarksForPaper(paper->id).result();
    if (!bookmarks)
        return fail(bookmarks.error(), context);
    if (request.isMarkdown)
        context.output.line(bookmarksAsMarkdown(*paper, *bookmarks));
    else
        listBookmarks(*paper, *bookmarks, context.output);
    return ExitStatus::Done;
}

ExitStatus runBookmarksAdd(const BookmarkRequest &request, const CommandContext &context)
{
    if (request.text.trimmed().isEmpty())
        return refuse(QStringLiteral("A bookmark needs a text"), context);
    const Result<Paper> paper = findPaper(request.paperId, context);
    if (!paper)
        return fail(paper.error(), context);
    if (const QString objection = objectionToPage(request.page, *paper); !objection.isEmpty())
        return refuse(objection, context);
    const Bookmark bookmark{.id = newBookmarkId(),
                            .paperId = paper->id,
                            .text = request.text,
                            .page = request.page,
                            .label = trimmedHorizontally(request.label),
                            .createdAt = toStoredTime(context.services.clock().now())};
    const Result<void> stored = context.services.library().createBookmark(bookmark).result();
    if (!stored)
        return fail(stored.error(), context);
    if (context.output.isJson())
        context.output.json(QJsonDocument(toJson(bookmark)));
    else
        printBookmark(bookmark, context.output);
    return ExitStatus::Done;
}

ExitStatus runBookmarksRemove(const QString &bookmarkId, const CommandContext &context)
{
    const Result<Bookmark> bookmark = findBookmark(bookmarkId, context);
    if (!bookmark)
        return fail(bookmark.error(), context);
    const Result<void> removed = context.services.library().deleteBookmark(bookmark->id).result();
    if (!removed)
        return fail(removed.error(), context);
    if (context.output.isJson())
        context.output.json(QJsonDocument(QJsonObject{{QStringLiteral("removed"), bookmark->id}}));
    else
        context.output.line(QStringLiteral("Removed the bookmark on page %1.").arg(bookmark->page));
    return ExitStatus::Done;
}
