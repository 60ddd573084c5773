#include "store/PaperRow.h"

std::optional<Paper> paperFromRow(const Row &row)
{
    const auto id = row.text(QLatin1String("id"));
    const auto title = row.text(QLatin1String("title"));
    const auto filepath = row.text(QLatin1String("filepath"));
    if (!id || !title || !filepath)
        return std::nullopt;
    return Paper{
        .id = *id,
        .title = *title,
        .authors = row.text(QLatin1String("authors")).value_or(QString()),
        .year = row.integer(QLatin1String("year")),
        .pageCount = row.integer(QLatin1String("page_count")).value_or(0),
        .coverPath = row.text(QLatin1String("cover_path")).value_or(QString()),
        .filepath = *filepath,
        .tags = {},
    };
}
