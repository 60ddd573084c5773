#include "cli/PaperLookup.h"

#include "app/Services.h"
#include "cli/Output.h"
#include "store/NativeLibraryService.h"

#include <QJsonObject>

namespace
{

Error lookupError(const QString &description)
{
    return {QStringLiteral("CommandLine"), 1, description, {}};
}

Error tooShort(const QString &id, const QString &what)
{
    return lookupError(QStringLiteral("'%1' is too short to name a %2: give at least %3 characters of its id")
                           .arg(id, what, QString::number(kShortestIdPrefix)));
}

void report(const QString &text, const CommandContext &context)
{
    context.output.failure(text);
    if (context.output.isJson())
        context.output.json(QJsonDocument(QJsonObject{{QStringLiteral("error"), text}}));
}

} // namespace

Result<Paper> findPaper(const QString &idOrPrefix, const CommandContext &context)
{
    if (idOrPrefix.size() < kShortestIdPrefix)
        return tooShort(idOrPrefix, QStringLiteral("paper"));
    NativeLibraryService &library = context.services.library();
    const Result<QStringList> ids = library.paperIdsWithPrefix(idOrPrefix.toLower()).result();
    if (!ids)
        return ids.error();
    if (ids->size() > 1) {
        return lookupError(QStringLiteral("'%1' names more than one paper: %2")
                               .arg(idOrPrefix, ids->mid(0, 5).join(QStringLiteral(", "))));
    }
    if (!ids->isEmpty()) {
        const Result<std::optional<Paper>> paper = library.paperById(ids->first()).result();
        if (!paper)
            return paper.error();
        if (*paper)
            return **paper;
    }
    return lookupError(QStringLiteral("No paper has the id '%1'").arg(idOrPrefix));
}

Result<Bookmark> findBookmark(const QString &idOrPrefix, const CommandContext &context)
{
    if (idOrPrefix.size() < kShortestIdPrefix)
        return tooShort(idOrPrefix, QStringLiteral("bookmark"));
    const Result<QList<Bookmark>> found =
        context.services.library().bookmarksWithIdPrefix(idOrPrefix.toUpper()).result();
    if (!found)
        return found.error();
    if (found->isEmpty())
        return lookupError(QStringLiteral("No bookmark has the id '%1'").arg(idOrPrefix));
    if (found->size() > 1)
        return lookupError(QStringLiteral("'%1' names more than one bookmark").arg(idOrPrefix));
    return found->first();
}

QString objectionToPage(qint64 page, const Paper &paper)
{
    if (page < 1)
        return QStringLiteral("Pages are counted from 1");
    // A paper whose pages were never counted is said to have none.
    if (paper.pageCount > 0 && page > paper.pageCount)
        return QStringLiteral("There is no page %1: the paper has %2").arg(page).arg(paper.pageCount);
    return {};
}

ExitStatus fail(const Error &error, const CommandContext &context)
{
    report(error.message(), context);
    return ExitStatus::Failed;
}

ExitStatus refuse(const QString &text, const CommandContext &context)
{
    report(text, context);
    return ExitStatus::WrongUsage;
}
