#pragma once

#include <QHash>
#include <QString>

/// How many papers there are, in all and by what lists them.
struct PaperCounts {
    qint64 all = 0;
    qint64 recentlyImported = 0;
    QHash<QString, qint64> byTag; ///< reserved tags included; tags that no paper carries are missing

    friend bool operator==(const PaperCounts &, const PaperCounts &) = default;
};
