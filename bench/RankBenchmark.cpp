// Times the ranked statement with the library's own ranking function against the same statement with SQLite's
// and prints one figure a line, in the form that bench/run reads.
#include "Figures.h"
#include "PageCache.h"
#include "RawSearch.h"
#include "Vocabulary.h"
#include "platform/Paths.h"
#include "store/Database.h"

#include <cstdio>
#include <cstdlib>
#include <memory>

namespace
{
using namespace std::chrono_literals;

struct Query {
    const char *kind;
    const char *expression;
    const char *target; ///< at a million rows, warm
};

constexpr char kFourTimesSooner[] = "ratio-most 0.25";
constexpr char kThreeTimesSooner[] = "ratio-most 0.333";

constexpr Query kQueries[] = {
    {"rare word", Vocabulary::kRareWord, "-"},
    {"common word", "matrix", kFourTimesSooner},
    {"very common word", "the", kFourTimesSooner},
    {"two common words", "matrix energy", "-"},
    {"two rare words", "saddlepoint wavelength", "-"},
    {"rare phrase", "\"singular value decomposition\"", "-"},
    {"common phrase", "\"of the\"", "-"},
    {"prefix", "trans*", kThreeTimesSooner},
    {"very common prefix", "the*", "-"},
    {"NEAR", "NEAR(matrix energy, 10)", "-"},
    {"AND, NOT", "(matrix AND energy) NOT theorem", "-"},
    {"OR", "matrix OR energy OR saddlepoint", "-"},
    {"no match", "qqqqq", "-"},
};

struct Times {
    std::vector<Milliseconds> own;
    std::vector<Milliseconds> stock;
};

void searchOnce(Database &database, const QByteArray &expression)
{
    static const QString statement = QString::fromLatin1(RawSearch::kRankedStatement);
    if (database.queryRanked(1h, statement, QString::fromUtf8(expression)))
        return;
    std::fprintf(stderr, "The search for '%s' failed\n", expression.constData());
    std::exit(1);
}

/// Alternates the two, so that whatever else the machine does meets both; the first of each only warms up.
Times warmTimes(Database &database, RawSearch &stock, const QByteArray &expression)
{
    constexpr std::size_t kFewestRuns = 3;
    constexpr std::size_t kMostRuns = 51;
    constexpr Milliseconds kLongEnough = 1s;
    stock.run(expression);
    searchOnce(database, expression);
    Times times;
    Milliseconds spent{};
    while (times.own.size() < kFewestRuns || (spent < kLongEnough && times.own.size() < kMostRuns)) {
        times.own.push_back(timeOf([&] { searchOnce(database, expression); }));
        times.stock.push_back(timeOf([&] { stock.run(expression); }));
        spent += times.own.back() + times.stock.back();
    }
    return times;
}

/// Each run on a connection just opened, with nothing of the library in memory.
Times coldTimes(const QString &path, const QByteArray &expression)
{
    Times times;
    for (int round = 0; round < 3; ++round) {
        {
            Database database(path);
            dropFromPageCache(path);
            times.own.push_back(timeOf([&] { searchOnce(database, expression); }));
        }
        RawSearch stock(path);
        dropFromPageCache(path);
        times.stock.push_back(timeOf([&] { stock.run(expression); }));
    }
    return times;
}

void print(const char *rows, const char *how, const Query &query, qint64 matches, const Times &times,
           const char *target)
{
    std::printf("%s rows, %s: %s (%lld match)\t%.3f\t%.3f\tms\t%s\n", rows, how, query.kind,
                static_cast<long long>(matches), median(times.own).count(), median(times.stock).count(),
                target);
}
} // namespace

/// quirevault-bench-rank ROWS: the library that XDG_DATA_HOME names, which has ROWS page rows.
int main(int argc, char **argv)
{
    if (argc != 2)
        return 2;
    const QString path = libraryDatabasePath();
    RawSearch stock(path);
    Database database(path);
    searchOnce(database, "the"); // reads all lengths, as idle time does in the program
    searchOnce(database, "the");
    while (database.hasIdleWork())
        database.doIdleWork();
    for (const Query &query : kQueries) {
        const bool isJudged = qstrcmp(argv[1], "1000000") == 0;
        const qint64 matches = stock.matches(query.expression);
        print(argv[1], "warm", query, matches, warmTimes(database, stock, query.expression),
              isJudged ? query.target : "-");
        print(argv[1], "cold", query, matches, coldTimes(path, query.expression), "-");
    }
}
