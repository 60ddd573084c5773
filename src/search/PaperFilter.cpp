#include "search/PaperFilter.h"

#include <QSet>
#include <QStringMatcher>

namespace
{
/// The filters of one query, made ready for many papers.
class Filter
{
public:
    explicit Filter(const ParsedQuery &query)
        : m_title(matcherFor(query.title))
        , m_author(matcherFor(query.author))
        , m_filename(matcherFor(query.filename))
        , m_year(query.year)
    {
    }

    bool passesTitle(const QString &title) const { return passes(m_title, title); }
    bool passesAuthor(const QString &authors) const { return passes(m_author, authors); }
    bool passesYear(std::optional<qint64> year) const { return !m_year || year == m_year; }
    bool passesFile(const QString &path) const
    {
        return !m_filename || passes(m_filename, QStringView(path).mid(path.lastIndexOf(u'/') + 1));
    }

private:
    static std::optional<QStringMatcher> matcherFor(const std::optional<QString> &value)
    {
        return value ? std::optional<QStringMatcher>(std::in_place, *value, Qt::CaseInsensitive)
                     : std::nullopt;
    }

    static bool passes(const std::optional<QStringMatcher> &matcher, QStringView text)
    {
        return !matcher || matcher->indexIn(text) >= 0;
    }

    std::optional<QStringMatcher> m_title;
    std::optional<QStringMatcher> m_author;
    std::optional<QStringMatcher> m_filename;
    std::optional<qint64> m_year;
};

bool passes(const Paper &paper, const Filter &filter)
{
    return filter.passesYear(paper.year) && filter.passesTitle(paper.title) &&
           filter.passesAuthor(paper.authors) && filter.passesFile(paper.filepath);
}

/// `paper` is null when the result's paper is not listed.
bool passes(const SearchResult &result, const Paper *paper, const Filter &filter)
{
    return filter.passesTitle(result.title) && filter.passesFile(result.filepath) &&
           filter.passesAuthor(paper ? paper->authors : QString()) &&
           filter.passesYear(paper ? paper->year : std::nullopt);
}
} // namespace

QHash<QString, const Paper *> papersOf(const QList<SearchResult> &results, const QList<Paper> &listed)
{
    QSet<QString> wanted;
    for (const SearchResult &result : results)
        wanted.insert(result.paperId);
    QHash<QString, const Paper *> papers;
    for (const Paper &paper : listed) {
        if (papers.size() == wanted.size())
            break;
        if (wanted.contains(paper.id))
            papers.insert(paper.id, &paper);
    }
    return papers;
}

QList<Paper> filteredPapers(const QList<Paper> &papers, const ParsedQuery &query, std::stop_token stop)
{
    if (!query.hasFieldFilters())
        return papers;
    const Filter filter(query);
    QList<Paper> passing;
    for (const Paper &paper : papers) {
        if (stop.stop_requested())
            break;
        if (passes(paper, filter))
            passing.append(paper);
    }
    return passing.size() == papers.size() ? papers : passing;
}

QList<SearchResult> filteredResults(const QList<SearchResult> &results, const ParsedQuery &query,
                                    const QList<Paper> &listed, ListedPapers standFor)
{
    if (standFor == ListedPapers::Everything && !query.hasFieldFilters())
        return results;
    const QHash<QString, const Paper *> papers = papersOf(results, listed);
    const Filter filter(query);
    QList<SearchResult> passing;
    for (const SearchResult &result : results) {
        const Paper *paper = papers.value(result.paperId);
        if ((paper || standFor == ListedPapers::Everything) && passes(result, paper, filter))
            passing.append(result);
    }
    return passing;
}
