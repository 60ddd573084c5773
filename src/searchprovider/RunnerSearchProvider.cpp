#include "searchprovider/RunnerSearchProvider.h"

#include "platform/ApplicationInterface.h"
#include "searchprovider/SearchProvider.h"
#include "searchprovider/ShownPaper.h"

#include <utility>

namespace
{

/// KRunner's number for a match that is possible: below programs and settings of that name.
constexpr int kPossibleMatch = 30;

/// KRunner orders by relevance: falling from the best match on.
double relevanceAt(qsizetype place)
{
    constexpr double kBest = 0.9;
    constexpr double kStep = 0.02;
    return kBest - kStep * double(place);
}

} // namespace

RunnerSearchProvider::RunnerSearchProvider(SearchProvider &provider)
    : QDBusAbstractAdaptor(&provider)
    , m_provider(provider)
{
    registerRunnerTypes();
}

RunnerActions RunnerSearchProvider::Actions()
{
    return {};
}

QVariantMap RunnerSearchProvider::Config()
{
    return {{QStringLiteral("MinLetterCount"), kFewestLetters}};
}

RunnerMatches RunnerSearchProvider::Match(const QString &query)
{
    const QString bounded = query.left(SearchProvider::kLongestText).simplified();
    RunnerMatches matches;
    for (const FoundPaper &paper : m_provider.papers(m_provider.find(bounded.split(u' ')))) {
        matches.append({.id = paper.id,
                        .text = shownTitle(paper),
                        .iconName = m_provider.icon(paper),
                        .type = kPossibleMatch,
                        .relevance = relevanceAt(matches.size()),
                        .properties = {{QStringLiteral("subtext"), shownDetails(paper)}}});
    }
    return matches;
}

void RunnerSearchProvider::Run(const QString &matchId, const QString &)
{
    QVariantMap platformData;
    if (const QString token = std::exchange(m_activationToken, {}); !token.isEmpty())
        platformData.insert(QLatin1String(kActivationTokenKey), token);
    m_provider.open(matchId, platformData);
}

void RunnerSearchProvider::SetActivationToken(const QString &token)
{
    m_activationToken = token.left(SearchProvider::kLongestText);
}

void RunnerSearchProvider::Teardown()
{
    // Nothing is kept from one search to the next.
}
