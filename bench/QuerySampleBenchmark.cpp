// Times searches for a sample of queries made of words that are not common: as words that must stand on the
// page, and as a person types them, when each begins a word. Prints figures in the form that bench/run reads.
#include "Figures.h"
#include "QuerySample.h"
#include "platform/Paths.h"
#include "search/NativeSearchService.h"
#include "store/DatabaseManager.h"

#include <cstdio>

namespace
{
constexpr int kQueries = 500;

template <typename Search> std::vector<Milliseconds> timesOf(const QStringList &queries, Search search)
{
    std::vector<Milliseconds> times;
    for (const QString &query : queries)
        times.push_back(timeOf([&] { search(query); }));
    return times;
}

void print(const char *rows, const char *what, const std::vector<Milliseconds> &times)
{
    std::printf("%s rows: %d queries, %s: 99th percentile\t%.3f\t-\tms\tmost 50\n", rows, kQueries, what,
                percentile(times, 99).count());
    std::printf("%s rows: %d queries, %s: median\t%.3f\t-\tms\t-\n", rows, kQueries, what,
                percentile(times, 50).count());
}
} // namespace

/// quirevault-bench-query-sample ROWS: the library that XDG_DATA_HOME names, which has ROWS page rows.
int main(int argc, char **argv)
{
    if (argc != 2)
        return 2;
    RawSearch library(libraryDatabasePath());
    const QStringList queries = QuerySample(library).draw(kQueries);

    DatabaseManager db(libraryDatabasePath());
    NativeSearchService service(db);
    const QString statement = QString::fromLatin1(RawSearch::kRankedStatement);
    const auto asWords = [&](const QString &query) {
        static_cast<void>(db.query(statement, {query}).result().has_value());
    };
    const auto asTyped = [&](const QString &query) {
        static_cast<void>(service.search(query).result().has_value());
    };
    timesOf(queries.mid(0, kQueries / 10), asWords); // warms up
    print(argv[1], "words", timesOf(queries, asWords));
    print(argv[1], "as typed", timesOf(queries, asTyped));
}
