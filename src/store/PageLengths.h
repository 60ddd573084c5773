#pragma once

#include <QtGlobal>
#include <limits>
#include <memory>
#include <optional>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

/// How many words each page row of the full-text table holds, in memory: ranking a hit needs its length, and
/// looking it up in the table's own records costs more than all the rest of ranking.
///
/// What is known is always what the records say; a length that is not known has to be asked of the table.
/// - Reading: nothing is read before a ranked statement has begun. A statement that would look up a fifth of
///   the rows or more reads all lengths at once, which is sooner. From the second ranked statement on (one is
///   all that a command makes), `readSlice` reads them while the database thread has nothing else to do.
/// - This connection's writes: an update hook makes the length of every row that is written unknown, and
///   nothing is remembered while a transaction that has written is open. So a rollback, of whatever kind,
///   leaves nothing that is wrong.
/// - Other connections' writes: `beginStatement` compares PRAGMA data_version and forgets everything.
///
/// Costs two bytes a row id (2 MB for a million rows) and, once, 0.1 s for a million rows, 0.3 s when the
/// disk has to be read. Rows whose ids are scattered too widely for an array stay unknown.
///
/// Knows the lengths of the library's one full-text table only. Use on the connection's thread. Owns the
/// connection's update hook; must go before the connection closes.
class PageLengths
{
public:
    /// Rows that a slice reads: measured as one to five milliseconds' worth.
    static constexpr qint64 kSliceRows = 10'000;

    explicit PageLengths(sqlite3 *connection);
    ~PageLengths();
    PageLengths(const PageLengths &) = delete;
    PageLengths &operator=(const PageLengths &) = delete;

    /// To be called by every ranked statement before its first `find`, while it holds its read transaction.
    /// `rows` is how many rows the table has; `lookups` how many `find`s are sure to come.
    void beginStatement(qint64 rows, qint64 lookups);
    std::optional<int> find(qint64 rowId) const
    {
        if (rowId < 0 || rowId >= static_cast<qint64>(m_lengths.size()))
            return {};
        const Length length = m_lengths[static_cast<std::size_t>(rowId)];
        return length == kUnknown ? std::nullopt : std::optional<int>(length);
    }
    /// Takes the length of a row, as the table answers it now, that `find` did not know.
    void remember(qint64 rowId, int length);

    /// Whether reading ahead would make later searches sooner.
    bool wantsSlice() const;
    /// Reads the next lengths, of `most` rows.
    void readSlice(qint64 most = kSliceRows);

private:
    using Length = quint16;
    static constexpr Length kUnknown = std::numeric_limits<Length>::max();
    struct Finalizer {
        void operator()(sqlite3_stmt *statement) const;
    };
    using Statement = std::unique_ptr<sqlite3_stmt, Finalizer>;

    static void noteWrite(void *self, int, const char *schema, const char *table, long long rowId);

    Statement prepared(const char *sql) const;
    std::optional<int> dataVersion();
    void forgetIfOthersWrote();
    bool isWriting() const;
    bool paysToReadAll(qint64 lookups) const;
    void readAll();
    void readNext(qint64 most);
    void store(qint64 rowId, qint64 length);
    void makeUnknown(qint64 rowId);

    sqlite3 *m_connection;
    Statement m_dataVersion;
    Statement m_nextLengths;
    std::optional<int> m_knownVersion;
    std::vector<Length> m_lengths; ///< by row id
    qint64 m_rows = 0;             ///< rows in the table when the latest ranked statement began
    qint64 m_lookups = 0;          ///< lengths that had to be asked of the table since all were forgotten
    qint64 m_lastRead = -1;        ///< every row up to this id has been read
    int m_statements = 0;          ///< ranked statements begun
    bool m_hasAll = false;         ///< every row has been read that could be
};
