#pragma once

#include "store/Passage.h"

#include <QList>

/// One paper found by a library search. Identified by `paperId`.
struct SearchResult {
    QString paperId;
    QString title;
    QString filepath;
    QString coverPath; ///< empty when there is none
    QList<Passage> passages;
    double score = 0; ///< higher is better

    friend bool operator==(const SearchResult &, const SearchResult &) = default;
};
