#include "indexing/CoreSpotlightIndexer.h"

#include "base/Log.h"
#include "base/TextClasses.h"
#include "store/Paper.h"

#include <QHash>
#include <QStringTokenizer>
#include <limits>

namespace
{
const auto kDomain = QString::fromLatin1(kSearchDomainIdentifier); // all items share it
const auto kBatch = QStringLiteral("performing batch index");

QStringList authorNames(const QString &authors)
{
    QStringList names;
    for (const QStringView name : qTokenize(authors, u','))
        names.append(trimmedHorizontally(name).toString());
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

SearchableItem itemOf(const Paper &paper, const std::optional<QDateTime> &created)
{
    return {
        .uniqueIdentifier = paper.id,
        .domainIdentifier = kDomain,
        .contentType = QStringLiteral("application/pdf"),
        .title = paper.title,
        .authorNames = authorNames(paper.authors),
        .contentDescription = QLatin1String(kPaperDescription) + paper.authors,
        .keywords = paper.tags,
        .contentCreationDate = created,
    };
}

SystemSearchIndex::Completion logging(const QString &what)
{
    return [what](const std::optional<Error> &error) {
        if (error)
            logLine(u"CoreSpotlightIndexer: Error " + what + u": " + error->message());
    };
}

QList<SearchableItem> searchableItems(const QList<Paper> &papers)
{
    // Where a day begins asks the system for the time zone, which takes as long as all the rest of an item.
    QHash<qint64, std::optional<QDateTime>> firstMoments;
    QList<SearchableItem> items;
    items.reserve(papers.size());
    for (const Paper &paper : papers) {
        std::optional<QDateTime> created;
        if (paper.year) {
            auto known = firstMoments.constFind(*paper.year);
            if (known == firstMoments.constEnd())
                known = firstMoments.insert(*paper.year, firstMomentOf(paper.year));
            created = *known;
        }
        items.append(itemOf(paper, created));
    }
    return items;
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
    if (m_index.isPresent()) // items of 100,000 papers would take 50 MB on their way to nowhere
        m_index.indexItems(searchableItems(papers), logging(kBatch));
}

void CoreSpotlightIndexer::publishLibrary(const QList<Paper> &papers)
{
    if (m_index.isPresent())
        m_index.replaceItems(searchableItems(papers), logging(kBatch));
}

void CoreSpotlightIndexer::withdraw(const QString &paperId)
{
    m_index.deleteItems({paperId}, logging(u"removing item " + paperId));
}

SearchableItem searchableItem(const Paper &paper)
{
    return itemOf(paper, firstMomentOf(paper.year));
}
