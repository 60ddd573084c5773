#include "app/Services.h"
#include "base/TextClasses.h"
#include "cli/Commands.h"
#include "cli/Output.h"
#include "cli/PaperLookup.h"
#include "cli/PaperPrinting.h"
#include "cli/RecordLists.h"
#include "search/FTSQueryBuilder.h"
#include "search/NativeSearchService.h"
#include "search/PaperFilter.h"
#include "search/ParsedQuery.h"
#include "store/NativeLibraryService.h"

#include <QJsonObject>

namespace
{

QJsonValue orNull(const std::optional<QString> &text)
{
    return text ? QJsonValue(*text) : QJsonValue();
}

QJsonObject explanation(const ParsedQuery &query)
{
    return {{QStringLiteral("fullText"), query.fullText},
            {QStringLiteral("title"), orNull(query.title)},
            {QStringLiteral("author"), orNull(query.author)},
            {QStringLiteral("filename"), orNull(query.filename)},
            {QStringLiteral("year"), query.year ? QJsonValue(*query.year) : QJsonValue()},
            {QStringLiteral("expression"), buildFTSQuery(query.fullText)}};
}

ExitStatus listMatchingPapers(const ParsedQuery &query, const CommandContext &context)
{
    const Result<QList<Paper>> papers = context.services.library().allPapers().result();
    if (!papers)
        return fail(papers.error(), context);
    printPapers(filteredPapers(*papers, query), context.output);
    return ExitStatus::Done;
}

/// The papers of the results, for what a result does not carry: authors and year.
Result<QHash<QString, Paper>> papersOf(const QList<SearchResult> &results, const CommandContext &context)
{
    QStringList ids;
    for (const SearchResult &result : results)
        ids.append(result.paperId);
    const Result<QList<Paper>> papers = context.services.library().papersByIds(ids).result();
    if (!papers)
        return papers.error();
    QHash<QString, Paper> byId;
    for (const Paper &paper : *papers)
        byId.insert(paper.id, paper);
    return byId;
}

void printResults(const QList<SearchResult> &results, const QString &query,
                  const QHash<QString, Paper> &papers, const Output &output)
{
    for (const SearchResult &result : results) {
        const Paper paper = papers.value(result.paperId);
        printPaperHeading(result.paperId, result.title, paper.authors, paper.year, output);
        for (const Passage &passage : result.passages)
            printPassage(passage, query, output);
        output.line({});
    }
    if (results.isEmpty())
        output.line(QStringLiteral("No papers match."));
}

} // namespace

ExitStatus runExplain(const QString &text, const Output &output)
{
    const QJsonObject parts = explanation(ParsedQuery(text));
    if (output.isJson()) {
        output.json(QJsonDocument(parts));
        return ExitStatus::Done;
    }
    for (auto part = parts.begin(); part != parts.end(); ++part) {
        const QString value = part->isNull() ? QStringLiteral("-") : part->toVariant().toString();
        output.line(part.key().leftJustified(11) + onOneLine(value));
    }
    return ExitStatus::Done;
}

ExitStatus runSearch(const QString &text, const CommandContext &context)
{
    const ParsedQuery query(text);
    if (query.fullText.isEmpty())
        return listMatchingPapers(query, context);

    const Result<QList<SearchResult>> found = context.services.search().search(query.fullText).result();
    if (!found)
        return fail(found.error(), context);
    const Result<QHash<QString, Paper>> papers = papersOf(*found, context);
    if (!papers)
        return fail(papers.error(), context);
    const QList<SearchResult> results =
        filteredResults(*found, query, papers->values(), ListedPapers::Everything);
    if (context.output.isJson())
        context.output.json(asJson(results));
    else
        printResults(results, query.fullText, *papers, context.output);
    return ExitStatus::Done;
}

ExitStatus runFind(const FindRequest &request, const CommandContext &context)
{
    const Result<Paper> paper = findPaper(request.paperId, context);
    if (!paper)
        return fail(paper.error(), context);
    const Result<QList<Passage>> passages =
        context.services.search().searchInPaper(paper->id, request.query).result();
    if (!passages)
        return fail(passages.error(), context);
    if (context.output.isJson()) {
        context.output.json(asJson(*passages));
        return ExitStatus::Done;
    }
    printPaper(*paper, context.output);
    for (const Passage &passage : *passages)
        printPassage(passage, request.query, context.output);
    if (passages->isEmpty())
        context.output.line(QStringLiteral("No passages match."));
    return ExitStatus::Done;
}
