#include "store/PaperRow.h"

#include "store/Statement.h"

PaperRow::PaperRow(const Statement &statement)
    : m_statement(statement)
    , m_id(column("id"))
    , m_title(column("title"))
    , m_authors(column("authors"))
    , m_year(column("year"))
    , m_pageCount(column("page_count"))
    , m_coverPath(column("cover_path"))
    , m_filepath(column("filepath"))
{
}

int PaperRow::column(const char *name) const
{
    for (int column = 0; column < m_statement.columnCount(); ++column) {
        if (m_statement.columnName(column) == QLatin1String(name))
            return column;
    }
    return -1;
}

std::optional<Paper> PaperRow::paper() const
{
    auto id = m_statement.text(m_id);
    auto title = m_statement.text(m_title);
    auto filepath = m_statement.text(m_filepath);
    if (!id || !title || !filepath)
        return std::nullopt;
    return Paper{
        .id = *std::move(id),
        .title = *std::move(title),
        .authors = m_statement.text(m_authors).value_or(QString()),
        .year = m_statement.integer(m_year),
        .pageCount = m_statement.integer(m_pageCount).value_or(0),
        .coverPath = m_statement.text(m_coverPath).value_or(QString()),
        .filepath = *std::move(filepath),
        .tags = {},
    };
}
