#include "search/SearchHits.h"

#include <algorithm>

namespace
{
double scoreOf(const Row &row)
{
    return 1.0 + row.real(QLatin1String("rank")).value_or(0.0) / -100.0;
}

Passage passageOf(const Row &row)
{
    return {.text = row.text(QLatin1String("snippet")).value_or(QString()),
            .page = row.integer(QLatin1String("page_num")).value_or(1)};
}

SearchResult newResult(const Paper &paper)
{
    return {.paperId = paper.id,
            .title = paper.title,
            .filepath = paper.filepath,
            .coverPath = paper.coverPath,
            .passages = {},
            .score = 0};
}

/// A passage that the result already holds changes nothing, not even the score.
void add(SearchResult &result, const Passage &passage, double score)
{
    if (result.passages.contains(passage))
        return;
    result.score = result.passages.isEmpty() ? score : std::max(result.score, score);
    result.passages.append(passage);
}
} // namespace

QList<SearchResult> groupedByPaper(const SearchHits &hits)
{
    QList<SearchResult> results;
    QHash<QString, qsizetype> positions;
    for (const Row &row : hits.rows) {
        const auto id = row.text(QLatin1String("paper_id"));
        const auto paper = id ? hits.papers.constFind(*id) : hits.papers.constEnd();
        if (paper == hits.papers.constEnd())
            continue;
        if (!positions.contains(*id)) {
            positions.insert(*id, results.size());
            results.append(newResult(*paper));
        }
        add(results[positions.value(*id)], passageOf(row), scoreOf(row));
    }
    std::stable_sort(results.begin(), results.end(), [](const SearchResult &left, const SearchResult &right) {
        return left.score > right.score;
    });
    return results;
}
