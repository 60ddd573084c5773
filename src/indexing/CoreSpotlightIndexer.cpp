#include "indexing/CoreSpotlightIndexer.h"

#include "base/Log.h"
#include "base/TextClasses.h"
#include "store/Paper.h"

#include <limits>

namespace
{
QStringList authorNames(const QString &authors)
{
    QStringList names = authors.split(u',');
    for (QString &name : names)
        name = trimmedHorizontally(name);
    return names;
}

std::optional<QDateTime> firstMomentOf(std::optional<qint64> year)
{
    using Years = std::numeric_limits<int>;
    if (!year || *year < Years::min() || *year > Years::max())
        return {};
    const QDate day(static_cast<int>(*year), 1, 1);
    return day.isValid() ? std::optional(day.startOfDay()) : std::nullopt;
}

SystemSearchIndex::Completion logging(const QString &what)
{
    return [what](const std::optional<Error> &error) {
        if (error)
            logLine(u"CoreSpotlightIndexer: Error " + what + u": " + error->message());
    };
}
} // namespace

CoreSpotlightIndexer::CoreSpotlightIndexer(SystemSearchIndex &index)
    : m_index(index)
{
}

void CoreSpotlightIndexer::publish(const Paper &paper)
{
    m_index.indexItems({searchableItem(paper)}, logging(u"indexing paper " + paper.id));
}

void CoreSpotlightIndexer::publish(const QList<Paper> &papers)
{
    if (!m_index.isPresent())
        return; // items of 100,000 papers would take 50 MB on their way to nowhere
    QList<SearchableItem> items;
    items.reserve(papers.size());
    for (const Paper &paper : papers)
        items.append(searchableItem(paper));
    m_index.indexItems(items, logging(QStringLiteral("performing batch index")));
}

void CoreSpotlightIndexer::withdraw(const QString &paperId)
{
    m_index.deleteItems({paperId}, logging(u"removing item " + paperId));
}

SearchableItem searchableItem(const Paper &paper)
{
    return {
        .uniqueIdentifier = paper.id,
        .domainIdentifier = QLatin1String(kSearchDomainIdentifier),
        .contentType = QStringLiteral("application/pdf"),
        .title = paper.title,
        .authorNames = authorNames(paper.authors),
        .contentDescription = u"Research paper by " + paper.authors,
        .keywords = paper.tags,
        .contentCreationDate = firstMomentOf(paper.year),
    };
}
