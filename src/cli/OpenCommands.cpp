// The commands that open reader windows.
#include "app/PDFDiscovery.h"
#include "cli/Commands.h"
#include "cli/DesktopProgram.h"
#include "cli/Output.h"
#include "cli/PaperLookup.h"
#include "cli/RecordLists.h"

#include <QFileInfo>

namespace
{

/// Why `path` cannot be opened in a reader window; empty when it can.
QString objectionTo(const QFileInfo &file)
{
    if (file.isDir())
        return QStringLiteral("It is a folder; quirevault import adds what it holds");
    return file.exists() ? QString() : QStringLiteral("There is no such file");
}

} // namespace

ExitStatus runOpenFiles(const std::vector<std::filesystem::path> &paths, const Output &output)
{
    QList<PDFOpenRequest> requests;
    for (const std::filesystem::path &path : paths) {
        const QFileInfo file(absolutePath(path));
        if (const QString objection = objectionTo(file); !objection.isEmpty())
            output.failure(QString::fromStdString(path.native()) + u": " + objection);
        else
            requests.append({.id = QUuid::createUuid(), .url = QUrl::fromLocalFile(file.filePath())});
    }
    return requests.size() == qsizetype(paths.size()) ? becomeDesktopProgram(requests) : ExitStatus::Failed;
}

ExitStatus runOpen(const OpenRequest &request, const CommandContext &context)
{
    const Result<Paper> paper = findPaper(request.paperId, context);
    if (!paper)
        return fail(paper.error(), context);
    if (const QString objection = request.page ? objectionToPage(*request.page, *paper) : QString();
        !objection.isEmpty())
        return refuse(objection, context);
    // A file that has vanished is the window's to speak of, where it can be looked for.
    context.toOpen.append({.id = QUuid::createUuid(),
                           .url = QUrl::fromLocalFile(paper->filepath),
                           .page = request.page,
                           .paperId = paper->id,
                           .searchText = request.text});
    if (context.output.isJson())
        context.output.json(asJson(context.toOpen));
    return ExitStatus::Done;
}
