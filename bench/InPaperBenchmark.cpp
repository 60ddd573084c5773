// Times searches inside one paper, in the middle of the library, against the statement behind them on a plain
// connection, which reads every hit of the library. Prints figures in the form that bench/run reads.
#include "Figures.h"
#include "RawSearch.h"
#include "platform/Paths.h"
#include "search/FTSQueryBuilder.h"
#include "search/NativeSearchService.h"
#include "store/DatabaseManager.h"

#include <cstdio>

namespace
{
constexpr const char *kQueries[] = {
    "saddlepoint", "\"singular value decomposition\"", "\"matrix\"", "\"the\"", "matrix", "trans*"};

QByteArray paperInTheMiddle(DatabaseManager &db)
{
    const auto rows = db.query(QStringLiteral("SELECT c0 AS id FROM fts_papers_content WHERE id >= "
                                              "(SELECT max(id) / 2 FROM fts_papers_content) LIMIT 1"))
                          .result();
    return rows && !rows->isEmpty() ? rows->first().text(QLatin1String("id")).value_or(QString()).toUtf8()
                                    : QByteArray();
}
} // namespace

/// quirevault-bench-in-paper ROWS: the library that XDG_DATA_HOME names, which has ROWS page rows.
int main(int argc, char **argv)
{
    if (argc != 2)
        return 2;
    RawSearch raw(libraryDatabasePath());
    DatabaseManager db(libraryDatabasePath());
    NativeSearchService service(db);
    const QByteArray paper = paperInTheMiddle(db);
    for (const char *text : kQueries) {
        const QString query = QString::fromLatin1(text);
        const QByteArray expression = buildFTSQuery(query).toUtf8();
        std::vector<Milliseconds> plain;
        std::vector<Milliseconds> own;
        for (int round = 0; round < 3; ++round) {
            plain.push_back(timeOf([&] { raw.runInPaper(paper, expression); }));
            own.push_back(timeOf([&] {
                static_cast<void>(
                    service.searchInPaper(QString::fromUtf8(paper), query).result().has_value());
            }));
        }
        std::printf("%s rows: %s inside one paper\t%.3f\t%.3f\tms\t-\n", argv[1], text, median(own).count(),
                    median(plain).count());
    }
}
