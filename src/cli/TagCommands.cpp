#include "app/RetagFlow.h"
#include "app/Services.h"
#include "base/TextClasses.h"
#include "cli/Commands.h"
#include "cli/Output.h"
#include "cli/PaperLookup.h"
#include "cli/PaperPrinting.h"
#include "cli/PaperPublishing.h"
#include "store/DatabaseManager.h"
#include "store/NativeLibraryService.h"
#include "store/ReservedTags.h"

#include <QJsonArray>
#include <QJsonObject>

namespace
{

/// Why `name` cannot be a tag of the user's own; empty when it can.
QString objectionTo(const QString &name)
{
    if (name.isEmpty())
        return QStringLiteral("A tag needs a name");
    if (isReservedTag(name))
        return QStringLiteral("'%1': names beginning with '_' are reserved").arg(name);
    return {};
}

ExitStatus printTags(const CommandContext &context)
{
    Result<QStringList> names = context.services.library().allTagNames().result();
    if (!names)
        return fail(names.error(), context);
    names->removeIf(isReservedTag);
    if (context.output.isJson()) {
        context.output.json(QJsonDocument(QJsonArray::fromStringList(*names)));
        return ExitStatus::Done;
    }
    for (const QString &name : std::as_const(*names))
        context.output.line(onOneLine(name));
    if (names->isEmpty())
        context.output.line(QStringLiteral("No tags."));
    return ExitStatus::Done;
}

QStringList idsOf(const QList<Paper> &papers)
{
    QStringList ids;
    for (const Paper &paper : papers)
        ids.append(paper.id);
    return ids;
}

/// Changes a tag that must exist: renaming or deleting one that does not is a slip of the fingers to report.
ExitStatus changeExistingTag(const QString &name, const CommandContext &context,
                             const std::function<QFuture<Result<void>>(DatabaseManager &)> &change)
{
    const Result<QStringList> names = context.services.library().allTagNames().result();
    if (!names)
        return fail(names.error(), context);
    if (!names->contains(name))
        return fail({{}, 0, QStringLiteral("No tag is called '%1'").arg(name), {}}, context);
    const Result<QList<Paper>> carriers = context.services.library().papersWithTag(name).result();
    if (!carriers)
        return fail(carriers.error(), context);
    const Result<void> changed = change(context.services.db()).result();
    if (!changed)
        return fail(changed.error(), context);
    publishPapers(idsOf(*carriers), context);
    return printTags(context);
}

ExitStatus changeTag(const PaperTagRequest &request, const CommandContext &context,
                     QFuture<Result<void>> (NativeLibraryService::*change)(const QString &, const QString &))
{
    const QString tag = trimmedHorizontally(request.tag);
    // The reading list has no command of its own: its tag may be given and taken by name.
    if (const QString objection = objectionTo(tag);
        !objection.isEmpty() && tag != QLatin1String(kCurrentlyReadingTag))
        return refuse(objection, context);
    const Result<Paper> paper = findPaper(request.paperId, context);
    if (!paper)
        return fail(paper.error(), context);
    const Result<void> changed = (context.services.library().*change)(paper->id, tag).result();
    if (!changed)
        return fail(changed.error(), context);
    const Result<Paper> updated = findPaper(paper->id, context);
    if (!updated)
        return fail(updated.error(), context);
    printOnePaper(*updated, context.output);
    return ExitStatus::Done;
}

} // namespace

ExitStatus runTag(const PaperTagRequest &request, const CommandContext &context)
{
    return changeTag(request, context, &NativeLibraryService::tagPaper);
}

ExitStatus runUntag(const PaperTagRequest &request, const CommandContext &context)
{
    return changeTag(request, context, &NativeLibraryService::removeTag);
}

ExitStatus runTags(const CommandContext &context)
{
    return printTags(context);
}

ExitStatus runTagsCreate(const QString &name, const CommandContext &context)
{
    const QString trimmed = trimmedHorizontally(name);
    if (const QString objection = objectionTo(trimmed); !objection.isEmpty())
        return refuse(objection, context);
    const Result<void> created = context.services.library().createTag(trimmed).result();
    return created ? printTags(context) : fail(created.error(), context);
}

ExitStatus runTagsRename(const QString &oldName, const QString &newName, const CommandContext &context)
{
    for (const QString &name : {oldName, trimmedHorizontally(newName)}) {
        if (const QString objection = objectionTo(name); !objection.isEmpty())
            return refuse(objection, context);
    }
    return changeExistingTag(oldName, context,
                             [&](DatabaseManager &db) { return db.renameTag(oldName, newName); });
}

ExitStatus runTagsDelete(const QString &name, const CommandContext &context)
{
    if (const QString objection = objectionTo(name); !objection.isEmpty())
        return refuse(objection, context);
    return changeExistingTag(name, context, [&](DatabaseManager &db) { return db.deleteTag(name); });
}

ExitStatus runRetag(const CommandContext &context)
{
    const Output &output = context.output;
    const Result<RetagCount> count =
        context.services.retagFlow().run(context.stop, [&](const RetagCount &now) {
            output.progress(QStringLiteral("%1/%2  Retagging").arg(now.done).arg(now.total));
        });
    output.progress({});
    if (!count && isCancelled(count.error())) {
        static_cast<void>(fail(
            {{}, 0, QStringLiteral("Stopped; papers retagged so far keep their new tags"), {}}, context));
        return ExitStatus::Interrupted;
    }
    if (!count)
        return fail(
            {count.error().domain, count.error().code, u"Retag failed: " + count.error().message(), {}},
            context);
    if (output.isJson()) {
        output.json(QJsonDocument(QJsonObject{{QStringLiteral("changed"), count->changed},
                                              {QStringLiteral("total"), count->total}}));
    } else {
        output.line(count->summary());
    }
    return ExitStatus::Done;
}
