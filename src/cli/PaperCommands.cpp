#include "app/Services.h"
#include "base/TextClasses.h"
#include "cli/Commands.h"
#include "cli/Output.h"
#include "cli/PaperLookup.h"
#include "cli/PaperPrinting.h"
#include "cli/PaperPublishing.h"
#include "cli/RecordLists.h"
#include "search/PaperFilter.h"
#include "search/ParsedQuery.h"
#include "store/NativeLibraryService.h"

#include <QJsonObject>

ExitStatus runList(const ListRequest &request, const CommandContext &context)
{
    const ParsedQuery filter(request.filter);
    if (!filter.fullText.isEmpty()) {
        return refuse(QStringLiteral("--filter takes author:, title:, filename: and year: only; "
                                     "for '%1' use quirevault search")
                          .arg(filter.fullText),
                      context);
    }
    const Result<QList<Paper>> papers =
        papersOf(request.which, context.services.library(), context.services.preferences());
    if (!papers)
        return fail(papers.error(), context);
    printPapers(filteredPapers(*papers, filter), context.output);
    return ExitStatus::Done;
}

ExitStatus runShow(const QString &paperId, const CommandContext &context)
{
    const Result<Paper> paper = findPaper(paperId, context);
    if (!paper)
        return fail(paper.error(), context);
    printOnePaper(*paper, context.output);
    return ExitStatus::Done;
}

ExitStatus runEdit(const EditRequest &request, const CommandContext &context)
{
    if (!request.title && !request.authors && !request.year)
        return refuse(QStringLiteral("Give at least one of --title, --authors and --year"), context);
    if (request.title && request.title->trimmed().isEmpty())
        return refuse(QStringLiteral("A title cannot be blank"), context);
    const Result<Paper> paper = findPaper(request.paperId, context);
    if (!paper)
        return fail(paper.error(), context);
    const PaperEdit edit{.title = request.title, .authors = request.authors, .year = request.year};
    const Result<Paper> updated = context.services.library().updatePaper(paper->id, edit).result();
    if (!updated)
        return fail(updated.error(), context);
    publishPapers({updated->id}, context);
    printOnePaper(*updated, context.output);
    return ExitStatus::Done;
}

ExitStatus runRemove(const QStringList &paperIds, const CommandContext &context)
{
    QStringList removed;
    for (const QString &id : paperIds) {
        const Result<Paper> paper = findPaper(id, context);
        if (!paper) {
            context.output.failure(paper.error().message());
            continue;
        }
        const Result<void> done = context.services.library().deletePaper(paper->id).result();
        if (!done) {
            context.output.failure(QStringLiteral("%1: %2").arg(paper->title, done.error().message()));
            continue;
        }
        removed.append(paper->id);
        if (!context.output.isJson())
            context.output.line(
                QStringLiteral("Removed %1 from the library; its file stays.").arg(onOneLine(paper->title)));
    }
    if (context.output.isJson()) {
        context.output.json(
            QJsonDocument(QJsonObject{{QStringLiteral("removed"), QJsonArray::fromStringList(removed)}}));
    }
    return removed.size() == paperIds.size() ? ExitStatus::Done : ExitStatus::Failed;
}
