#include "app/TagMerge.h"

#include "store/ReservedTags.h"

QStringList mergedTags(const QStringList &base, const QStringList &computed, const QStringList &current)
{
    QStringList merged;
    for (const QString &tag : computed) {
        const bool wasTakenAway = base.contains(tag) && !current.contains(tag);
        if (!wasTakenAway)
            merged.append(tag);
    }
    for (const QString &tag : current) {
        if (base.contains(tag) || merged.contains(tag))
            continue;
        merged.append(tag);
        if (!isReservedTag(tag))
            merged.removeAll(QLatin1String(kUntaggedTag));
    }
    return merged;
}
