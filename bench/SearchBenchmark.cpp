// Times ranked searches of one library against the raw statement behind them and prints one figure a line,
// in the form that bench/run reads.
#include "Figures.h"
#include "RawSearch.h"
#include "Vocabulary.h"
#include "platform/Paths.h"
#include "search/FTSQueryBuilder.h"
#include "search/NativeSearchService.h"
#include "store/DatabaseManager.h"

#include <cstdio>
#include <cstdlib>

namespace
{

using namespace std::chrono_literals;

struct Query {
    const char *kind;
    const char *text;
};

constexpr Query kQueries[] = {
    {"rare word", Vocabulary::kRareWord},           {"common word", "matrix"}, {"very common word", "the"},
    {"phrase", "\"singular value decomposition\""}, {"prefix", "trans*"},
};

struct Times {
    std::vector<Milliseconds> raw;
    std::vector<Milliseconds> service;
};

void searchOnce(NativeSearchService &service, const QString &query)
{
    const auto results = service.search(query).result();
    if (results && !results->isEmpty())
        return;
    std::fprintf(stderr, "The search for '%s' found nothing\n", qPrintable(query));
    std::exit(1);
}

/// Alternates the two, so that whatever else the machine does meets both; the first of each only warms up.
Times measure(RawSearch &raw, NativeSearchService &service, const QString &query)
{
    constexpr std::size_t kFewestRuns = 7;
    constexpr std::size_t kMostRuns = 101;
    constexpr Milliseconds kLongEnough = 2s;
    const QByteArray expression = buildFTSQuery(query).toUtf8();
    raw.run(expression);
    searchOnce(service, query);

    Times times;
    Milliseconds spent{};
    while (times.raw.size() < kFewestRuns || (spent < kLongEnough && times.raw.size() < kMostRuns)) {
        times.raw.push_back(timeOf([&] { raw.run(expression); }));
        times.service.push_back(timeOf([&] { searchOnce(service, query); }));
        spent += times.raw.back() + times.service.back();
    }
    return times;
}

} // namespace

/// quirevault-bench-search ROWS TARGET: the library that XDG_DATA_HOME names, which has ROWS page rows;
/// TARGET is what a search may take and how bench/run is to judge it, "-" for nothing.
int main(int argc, char **argv)
{
    if (argc != 3)
        return 2;
    RawSearch raw(libraryDatabasePath());
    DatabaseManager db(libraryDatabasePath());
    NativeSearchService service(db);
    for (const Query &query : kQueries) {
        const QString text = QString::fromLatin1(query.text);
        const Times times = measure(raw, service, text);
        std::printf("search of %s rows: %s (%lld match)\t%.3f\t%.3f\tms\t%s\n", argv[1], query.kind,
                    static_cast<long long>(raw.matches(buildFTSQuery(text).toUtf8())),
                    median(times.service).count(), median(times.raw).count(), argv[2]);
    }
}
