#include "store/PageRows.h"

namespace
{
constexpr QLatin1String kRow("row");
constexpr QLatin1String kPaper("paper");
constexpr QLatin1String kCount("count");

std::optional<Row> firstRow(Database &database, const QString &sql, const SqlValues &parameters)
{
    const auto rows = database.query(sql, parameters);
    return rows && !rows->isEmpty() ? std::optional(rows->first()) : std::nullopt;
}

/// A stored page and the place of its paper in the order of insertion.
struct StoredPage {
    qint64 row = 0;
    qint64 paper = 0;
};

/// The first page at or after `row` whose paper still exists.
std::optional<StoredPage> pageFrom(Database &database, qint64 row)
{
    // Pages without a paper are leftovers of damage; a long run of them is not worth reading through.
    const auto found = firstRow(
        database,
        QStringLiteral("SELECT page.id AS row, papers.rowid AS paper FROM "
                       "(SELECT id, c0 FROM fts_papers_content WHERE id >= ? ORDER BY id LIMIT 100) AS page "
                       "CROSS JOIN papers ON papers.id = page.c0 LIMIT 1"),
        {row});
    if (!found)
        return {};
    return StoredPage{.row = found->integer(kRow).value_or(0), .paper = found->integer(kPaper).value_or(0)};
}

/// The first row, from 1 to `last`, whose page is of `paper` or a later one.
qint64 firstRowFrom(Database &database, qint64 paper, qint64 last)
{
    qint64 low = 1;
    qint64 high = last;
    while (low < high) {
        const qint64 middle = low + (high - low) / 2;
        const auto page = pageFrom(database, middle);
        if (!page || page->paper >= paper)
            high = middle;
        else
            low = page->row + 1;
    }
    // Ids that are not in use may lie before the page.
    const auto page = pageFrom(database, low);
    return page ? page->row : low;
}

qint64 countPagesOf(Database &database, const QString &paperId, const PageRows &rows)
{
    const auto counted =
        firstRow(database,
                 QStringLiteral(
                     "SELECT count(*) AS count FROM fts_papers_content WHERE id BETWEEN ? AND ? AND c0 = ?"),
                 {rows.first, rows.last, paperId});
    return counted ? counted->integer(kCount).value_or(0) : 0;
}

/// Shows only `rows` of the full-text table for as long as it lives.
class NarrowedTable
{
public:
    NarrowedTable(Database &database, const PageRows &rows)
        : m_database(database)
    {
        // The column that is named like the table is what MATCH and the auxiliary functions are given.
        static_cast<void>(
            database
                .execute(QStringLiteral("CREATE TEMP VIEW fts_papers AS SELECT rowid, paper_id, page_num, "
                                        "content, fts_papers FROM main.fts_papers WHERE rowid BETWEEN %1 AND "
                                        "%2")
                             .arg(rows.first)
                             .arg(rows.last))
                .has_value()); // without the view the statement reads more and finds the same
    }
    ~NarrowedTable()
    {
        static_cast<void>(
            m_database.execute(QStringLiteral("DROP VIEW IF EXISTS temp.fts_papers")).has_value());
    }
    NarrowedTable(const NarrowedTable &) = delete;
    NarrowedTable &operator=(const NarrowedTable &) = delete;

private:
    Database &m_database;
};
} // namespace

std::optional<PageRows> findPageRows(Database &database, const QString &paperId)
{
    const auto paper = firstRow(
        database, QStringLiteral("SELECT rowid AS row, chunk_count AS count FROM papers WHERE id = ?"),
        {paperId});
    const auto last = firstRow(database, QStringLiteral("SELECT max(id) AS row FROM fts_papers_content"), {});
    const qint64 count = paper ? paper->integer(kCount).value_or(0) : 0;
    if (count <= 0 || !last)
        return {};
    const qint64 first =
        firstRowFrom(database, paper->integer(kRow).value_or(0), last->integer(kRow).value_or(0));
    const PageRows rows{.first = first, .last = first + count - 1};
    // The row after them is counted as well: it must not be the paper's.
    return countPagesOf(database, paperId, {rows.first, rows.last + 1}) == count ? std::optional(rows)
                                                                                 : std::nullopt;
}

Result<QList<Row>> queryPagesOf(Database &database, const QString &paperId,
                                const std::function<Result<QList<Row>>()> &query)
{
    Result<QList<Row>> answer = QList<Row>();
    const auto done = inTransaction(database, [&]() -> Result<void> {
        const std::optional<PageRows> rows = findPageRows(database, paperId);
        const auto narrowed = rows ? std::make_unique<NarrowedTable>(database, *rows) : nullptr;
        answer = query();
        return answer ? Result<void>() : Result<void>(answer.error());
    });
    return done ? answer : Result<QList<Row>>(done.error());
}

Result<void> deletePagesOf(Database &database, const QString &paperId, const std::optional<PageRows> &rows)
{
    const auto statement = QStringLiteral("DELETE FROM fts_papers WHERE paper_id = ?");
    if (!rows)
        return database.execute(statement, {paperId});
    return database.execute(statement + u" AND rowid BETWEEN ? AND ?", {paperId, rows->first, rows->last});
}
