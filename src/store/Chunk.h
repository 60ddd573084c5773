#pragma once

#include <QByteArray>

/// A unit of a paper's text as the full-text table holds it.
struct Chunk {
    QByteArray text;    ///< UTF-8
    qint64 pageNum = 1; ///< 1-based page that the text stands on
    qint64 index = 0;   ///< 0-based position among the paper's chunks

    friend bool operator==(const Chunk &, const Chunk &) = default;
};
