#include "store/TagQueries.h"

#include "store/Database.h"
#include "store/ReservedTags.h"

Result<void> insertTag(Database &database, const QString &paperId, const QString &tag)
{
    return database.execute(QStringLiteral("INSERT OR IGNORE INTO tags (paper_id, tag) VALUES (?, ?)"),
                            {paperId, tag});
}

Result<void> removeTag(Database &database, const QString &paperId, const QString &tag)
{
    return database.execute(QStringLiteral("DELETE FROM tags WHERE paper_id = ? AND tag = ?"),
                            {paperId, tag});
}

Result<void> giveTag(Database &database, const QString &paperId, const QString &tag)
{
    const Result<void> given = insertTag(database, paperId, tag);
    if (!given || isReservedTag(tag) || tag == QLatin1String(kUntaggedTag))
        return given;
    return removeTag(database, paperId, QLatin1String(kUntaggedTag));
}
