#pragma once

#include "store/PageLengths.h"
#include "store/PrefixCounter.h"
#include "store/RankFunction.h"
#include "support/TemporaryFolder.h"

#include <QFile>
#include <QList>
#include <bit>
#include <random>
#include <sqlite3.h>

/// Makes up pages and full-text expressions of all kinds from a few words, always the same for one seed.
class RandomText
{
public:
    explicit RandomText(unsigned seed)
        : m_random(seed)
    {
    }

    int below(int end) { return static_cast<int>(m_random() % static_cast<unsigned>(end)); }

    /// Common words come first: the chance of a word falls with its place.
    QByteArray word()
    {
        static constexpr const char *kWords[] = {"the",    "matrix",    "transport", "transform", "of",
                                                 "energy", "transient", "proof",     "gamma",     "theorem",
                                                 "sum",    "transpose", "kernel",    "zeta",      "omega"};
        return kWords[below(1 + below(static_cast<int>(std::size(kWords))))];
    }

    QByteArray words(int count)
    {
        QByteArray text;
        for (; count > 0; --count)
            text += word() + ' ';
        return text.trimmed();
    }

    /// From empty pages to some whose length takes two bytes of its record.
    QByteArray page() { return words(below(20) == 0 ? 0 : 1 + below(below(30) == 0 ? 400 : 40)); }

    QByteArray expression()
    {
        switch (below(10)) {
        case 0:
            return word().left(1 + below(5)) + '*';
        case 1:
            return '"' + words(2 + below(2)) + '"';
        case 2:
            return "NEAR(" + words(2) + ", " + QByteArray::number(below(6)) + ')';
        case 3:
            return "NEAR(\"" + words(2) + "\" " + word().left(3) + "*, 4)";
        case 4:
            return expression() + " OR " + word();
        case 5:
            return '(' + expression() + ") AND " + word();
        case 6:
            return '(' + expression() + ") NOT " + word();
        case 7:
            return '^' + word() + " OR " + words(2);
        default:
            return words(1 + below(3));
        }
    }

private:
    std::mt19937 m_random;
};

/// A full-text table in a file, and a connection to it that has both rankings: the built-in bm25, and this
/// program's under the name own_rank.
class RankedLibrary
{
public:
    RankedLibrary()
    {
        sqlite3_open(QFile::encodeName(path()).constData(), &connection);
        run("PRAGMA journal_mode = WAL");
        run("CREATE VIRTUAL TABLE fts_papers USING fts5(paper_id UNINDEXED, page_num UNINDEXED, content, "
            "tokenize='unicode61')");
        lengths = std::make_unique<PageLengths>(connection);
        prefixes = std::make_unique<PrefixCounter>(connection);
        EXPECT_TRUE(registerRankFunction(connection, *lengths, *prefixes, "own_rank"));
    }
    ~RankedLibrary()
    {
        lengths.reset();
        prefixes.reset();
        EXPECT_EQ(sqlite3_close(connection), SQLITE_OK);
    }
    RankedLibrary(const RankedLibrary &) = delete;
    RankedLibrary &operator=(const RankedLibrary &) = delete;

    QString path() const { return folder.path(QStringLiteral("library.db")); }

    void run(const QByteArray &sql)
    {
        EXPECT_EQ(sqlite3_exec(connection, sql.constData(), nullptr, nullptr, nullptr), SQLITE_OK)
            << sql.constData() << ": " << sqlite3_errmsg(connection);
    }

    static QByteArray insertion(int paper, int page, const QByteArray &content)
    {
        return "INSERT INTO fts_papers (paper_id, page_num, content) VALUES ('p" + QByteArray::number(paper) +
               "', " + QByteArray::number(page) + ", '" + content + "');";
    }
    static QByteArray removal(int paper)
    {
        return "DELETE FROM fts_papers WHERE paper_id = 'p" + QByteArray::number(paper) + "';";
    }
    /// The statements that write a paper of a few random pages.
    static QByteArray paper(int number, RandomText &text)
    {
        QByteArray sql;
        for (int pages = 1 + text.below(6), page = 1; page <= pages; ++page)
            sql += insertion(number, page, text.page());
        return sql;
    }

    /// Compares the two rankings bit by bit on every row that matches; answers how many do.
    int expectSameScores(const QByteArray &expression, const QByteArray &weights = {})
    {
        prefixes->expand(QString::fromUtf8(expression));
        const QByteArray sql = "SELECT rowid, bm25(fts_papers" + weights + "), own_rank(fts_papers" +
                               weights + ") FROM fts_papers WHERE fts_papers MATCH ?";
        sqlite3_stmt *rows = nullptr;
        sqlite3_prepare_v2(connection, sql.constData(), -1, &rows, nullptr);
        sqlite3_bind_text(rows, 1, expression.constData(), -1, SQLITE_STATIC);
        int count = 0;
        for (; sqlite3_step(rows) == SQLITE_ROW; ++count) {
            const double stock = sqlite3_column_double(rows, 1);
            const double own = sqlite3_column_double(rows, 2);
            EXPECT_EQ(std::bit_cast<quint64>(own), std::bit_cast<quint64>(stock))
                << expression.constData() << ", row " << sqlite3_column_int64(rows, 0) << ": " << own
                << " for " << stock;
        }
        EXPECT_EQ(sqlite3_finalize(rows), SQLITE_OK) << expression.constData();
        prefixes->forget();
        return count;
    }

    TemporaryFolder folder;
    sqlite3 *connection = nullptr;
    std::unique_ptr<PageLengths> lengths;
    std::unique_ptr<PrefixCounter> prefixes;
};
