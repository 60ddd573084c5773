#pragma once

#include <QString>

/// One matching passage.
struct Passage {
    QString text;    ///< the snippet, matches and cuts marked with "..."
    qint64 page = 1; ///< 1-based

    friend bool operator==(const Passage &, const Passage &) = default;
};
