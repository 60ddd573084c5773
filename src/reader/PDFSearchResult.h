#pragma once

#include <QString>
#include <QUuid>

/// A hit of the search inside a paper.
struct PDFSearchResult {
    QUuid id; ///< new for every hit
    QString snippet;
    qint64 pageIndex = 0; ///< 0-based

    friend bool operator==(const PDFSearchResult &, const PDFSearchResult &) = default;
};
