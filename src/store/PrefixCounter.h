#pragma once

#include "store/Statement.h"

#include <QByteArray>
#include <QList>
#include <optional>
#include <vector>

struct Fts5Context;
struct Fts5ExtensionApi;
struct fts5_api;

/// Counts the page rows that a prefix matches, for ranking. FTS5 merges the places of all words that begin so
/// to find the rows, and would merge them a second time to count the rows; marking each word's rows in an
/// array of bits takes half as long.
///
/// The words come from the index's vocabulary. Reading that makes every search under way begin anew, so the
/// expression has to be told before its statement runs. Rows of words that stand in few places are marked at
/// once; those of the others when they are to be counted, which a statement without a hit never asks for.
///
/// Knows the library's one full-text table only. Use on the connection's thread; must go before the
/// connection closes.
class PrefixCounter
{
public:
    explicit PrefixCounter(sqlite3 *connection);

    /// Gives the connection the function that marks rows; answers whether it took it.
    bool registerWith(fts5_api *api);

    /// Looks up the words of the prefixes in `expression`, which the next ranked statement is for.
    void expand(const QString &expression);
    /// To be called after that statement.
    void forget();

    /// How many rows match phrase `phrase` of the statement under way, exactly or at least `enough`. Nothing
    /// when that is uncertain: the phrase is no prefix that `expand` knew, its letters are not what the index
    /// holds, another connection has committed since, or this one had written in its transaction.
    std::optional<qint64> count(const Fts5ExtensionApi *api, Fts5Context *hit, int phrase, qint64 enough);

private:
    /// A set of row ids.
    class Rows
    {
    public:
        /// Answers whether the set can hold the row.
        bool insert(qint64 rowId);
        qint64 size() const { return m_size; }

    private:
        std::vector<quint64> m_bits;
        qint64 m_size = 0;
    };
    struct Prefix {
        QByteArray written;            ///< as the expression has it
        QByteArray letters;            ///< as the index has them
        Rows rows;                     ///< in which one of the words is known to stand
        QList<QByteArray> commonWords; ///< whose rows are not all among them
    };
    struct Marking;

    bool isPrepared();
    std::optional<qint64> dataVersion();
    std::optional<Prefix> expanded(const QString &written);
    bool startAt(const QByteArray &word);
    bool mark(const QByteArray &word, Marking &marking);

    sqlite3 *m_connection;
    std::optional<Statement> m_words;
    std::optional<Statement> m_rowsOfWord;
    std::optional<Statement> m_dataVersion;
    std::optional<qint64> m_knownVersion;         ///< when the words were looked up
    std::vector<std::optional<Prefix>> m_phrases; ///< of the expression; without a value what is not counted
    Marking *m_marking = nullptr;                 ///< while `mark` runs
};
