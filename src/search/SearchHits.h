#pragma once

#include "store/Paper.h"
#include "store/Row.h"
#include "store/SearchResult.h"

#include <QHash>
#include <QList>

/// Page rows as the ranked statement delivers them, and the papers that they belong to.
struct SearchHits {
    QList<Row>
        rows; ///< columns paper_id, page_num, snippet and rank (bm25: the lower the better), best first
    QHash<QString, Paper> papers; ///< by id; a paper that is gone is absent
};

/// One result a paper, best first, its passages in the order of the rows. The score of a row is
/// 1 - rank / 100, that of a paper its best row's. Equal scores keep the order of the rows.
QList<SearchResult> groupedByPaper(const SearchHits &hits);
