// How long a search waits while six jobs write papers as fast as the database takes them, which is more than
// an import can do: its jobs spend most of their time reading PDFs. Writes to the library that XDG_DATA_HOME
// names. Prints figures in the form that bench/run reads.
#include "Figures.h"
#include "QuerySample.h"
#include "indexing/PaperWriter.h"
#include "platform/Paths.h"
#include "search/NativeSearchService.h"
#include "store/DatabaseManager.h"

#include <atomic>
#include <cstdio>
#include <thread>

namespace
{
constexpr int kJobs = 6;
constexpr int kSearches = 300;
constexpr int kPages = 20;

NewPaper paperOf(int job, const Vocabulary &vocabulary)
{
    std::mt19937_64 random(static_cast<std::uint64_t>(job));
    NewPaper added;
    added.paper.title = QStringLiteral("Written by job %1").arg(job);
    added.paper.filepath = QStringLiteral("/written/%1.pdf").arg(job);
    added.dateIndexed = QStringLiteral("2026-01-01T00:00:00Z");
    for (int page = 0; page < kPages; ++page) {
        QByteArray text;
        for (int words = 0; words < 325; ++words)
            text += vocabulary.anyWord(random()) + ' ';
        added.chunks.append({.text = text, .pageNum = page + 1, .index = page});
    }
    return added;
}

/// Writes `added` under ever new ids until it is told to stop; answers how often.
int writePapers(DatabaseManager &db, NewPaper added, const std::atomic<bool> &isOver)
{
    const QString title = added.paper.title;
    int written = 0;
    while (!isOver) {
        added.paper.id = title + QStringLiteral(", paper %1").arg(written);
        const auto done = db.perform(Urgency::Background, [added](Database &database) {
                                return writePaper(database, added);
                            }).result();
        if (!done) {
            std::fprintf(stderr, "%s\n", qPrintable(done.error().message()));
            break;
        }
        ++written;
    }
    return written;
}
} // namespace

/// quirevault-bench-search-while-importing ROWS
int main(int argc, char **argv)
{
    if (argc != 2)
        return 2;
    RawSearch library(libraryDatabasePath());
    const QStringList queries = QuerySample(library).draw(kSearches);

    DatabaseManager db(libraryDatabasePath());
    NativeSearchService service(db);
    std::atomic<bool> isOver = false;
    std::atomic<int> papers = 0;
    const Vocabulary vocabulary;
    std::vector<std::thread> jobs;
    for (int job = 0; job < kJobs; ++job)
        jobs.emplace_back(
            [&, added = paperOf(job, vocabulary)] { papers += writePapers(db, added, isOver); });
    std::vector<Milliseconds> waits;
    for (const QString &query : queries)
        waits.push_back(timeOf([&] { static_cast<void>(service.search(query).result().has_value()); }));
    isOver = true;
    for (std::thread &job : jobs)
        job.join();
    std::printf("%s rows: search while %d jobs write: 95th percentile\t%.3f\t-\tms\tmost 100\n", argv[1],
                kJobs, percentile(waits, 95).count());
    std::printf("# search while importing: %d papers of %d pages were written during %d searches\n",
                papers.load(), kPages, kSearches);
}
