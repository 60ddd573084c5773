#pragma once

#include "search/ParsedQuery.h"
#include "store/Paper.h"
#include "store/SearchResult.h"

#include <QHash>
#include <QList>
#include <stop_token>

/// What the listed papers stand for.
enum class ListedPapers {
    Everything, ///< all papers, or a list that does not narrow searches
    OneTag,     ///< the papers of the selected tag: results outside it are left out
};

/// The papers that pass every filter of `query`, in their order. Texts are compared as "contains", case
/// folded; free text does not filter. When all pass, the list itself. A stop leaves it unfinished.
QList<Paper> filteredPapers(const QList<Paper> &papers, const ParsedQuery &query, std::stop_token stop = {});

/// Those of the listed papers that have results, by id; a missing one is null. Few of many: of the list, only
/// papers with results are kept. The list must outlive the answer.
QHash<QString, const Paper *> papersOf(const QList<SearchResult> &results, const QList<Paper> &listed);

/// The results that pass, in their order. Author and year are looked up in `listed`; a result whose paper is
/// not there fails those two filters.
QList<SearchResult> filteredResults(const QList<SearchResult> &results, const ParsedQuery &query,
                                    const QList<Paper> &listed, ListedPapers standFor);
