#include "store/TagQueries.h"

#include "store/Database.h"
#include "store/ReservedTags.h"

Result<void> giveTag(Database &database, const QString &paperId, const QString &tag)
{
    const Result<void> given = database.execute(
        QStringLiteral("INSERT OR IGNORE INTO tags (paper_id, tag) VALUES (?, ?)"), {paperId, tag});
    if (!given || isReservedTag(tag) || tag == QLatin1String(kUntaggedTag))
        return given;
    return database.execute(QStringLiteral("DELETE FROM tags WHERE paper_id = ? AND tag = ?"),
                            {paperId, QLatin1String(kUntaggedTag)});
}
