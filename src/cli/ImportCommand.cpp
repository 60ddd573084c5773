#include "app/ImportFlow.h"
#include "app/PDFDiscovery.h"
#include "app/Services.h"
#include "cli/Commands.h"
#include "cli/Output.h"
#include "cli/PaperLookup.h"
#include "cli/PaperPublishing.h"
#include "store/NativeLibraryService.h"

#include <QJsonArray>
#include <QJsonObject>

namespace
{

struct Selection {
    QStringList fresh;   ///< to be indexed
    QStringList skipped; ///< in the library already
};

Selection select(const QStringList &found, const QSet<QString> &libraryPaths)
{
    Selection selection{.fresh = newPaths(found, libraryPaths), .skipped = {}};
    for (const QString &path : found) {
        if (libraryPaths.contains(path))
            selection.skipped.append(path);
    }
    selection.skipped.removeDuplicates();
    return selection;
}

void showProgress(const ImportProgress &progress, const Output &output)
{
    QString text = QStringLiteral("%1/%2  %3").arg(progress.done).arg(progress.total).arg(progress.status);
    if (!progress.timeEstimate.isEmpty())
        text = QStringLiteral("%1/%2  %3  %4")
                   .arg(progress.done)
                   .arg(progress.total)
                   .arg(progress.timeEstimate, progress.status);
    output.progress(text);
}

QJsonObject asJson(const ImportOutcome &outcome, const QStringList &skipped)
{
    QJsonObject errors;
    for (auto error = outcome.response.errors.begin(); error != outcome.response.errors.end(); ++error)
        errors.insert(error.key(), error.value());
    return {{QStringLiteral("indexed"), QJsonArray::fromStringList(outcome.response.indexed)},
            {QStringLiteral("errors"), errors},
            {QStringLiteral("skipped"), QJsonArray::fromStringList(skipped)}};
}

QString counts(const ImportOutcome &outcome, const QStringList &skipped)
{
    QString text = QStringLiteral("%1 indexed, %2 failed, %3 already in the library")
                       .arg(outcome.response.indexed.size())
                       .arg(outcome.response.errors.size())
                       .arg(skipped.size());
    if (!outcome.notDone.isEmpty())
        text += QStringLiteral(", %1 not done").arg(outcome.notDone.size());
    return text;
}

} // namespace

ExitStatus runImport(const ImportRequest &request, const CommandContext &context)
{
    const Output &output = context.output;
    const DiscoveredPDFs found = discoverPDFs(request.paths, context.stop);
    const Result<QSet<QString>> libraryPaths = context.services.library().allFilepaths().result();
    if (!libraryPaths)
        return fail(libraryPaths.error(), context);

    const Selection selection = select(found.paths, *libraryPaths);
    ImportOutcome outcome = context.services.importFlow().run(
        selection.fresh, {.beginNoMore = {}, .abandon = context.stop},
        [&](const ImportProgress &progress) { showProgress(progress, output); });
    output.progress({});
    publishPapers(outcome.response.indexed, context);
    for (auto problem = found.problems.begin(); problem != found.problems.end(); ++problem) {
        output.failure(problem.key() + u": " + problem.value());
        outcome.response.errors.insert(problem.key(), problem.value());
    }

    if (output.isJson())
        output.json(QJsonDocument(asJson(outcome, selection.skipped)));
    else
        output.line(counts(outcome, selection.skipped));
    if (context.stop.stop_requested())
        return ExitStatus::Interrupted;
    return outcome.response.errors.isEmpty() ? ExitStatus::Done : ExitStatus::Failed;
}
