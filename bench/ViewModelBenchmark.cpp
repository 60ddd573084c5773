// Times what the library window asks of its view model over one library: the load, what each operation keeps
// the main thread for, and a keystroke in the search field. Prints figures in the form that bench/run reads.
#include "Figures.h"
#include "app/LibraryViewModel.h"
#include "app/Services.h"
#include "base/Clock.h"
#include "indexing/CoreSpotlightIndexer.h"
#include "platform/Paths.h"
#include "platform/Preferences.h"
#include "platform/SystemSearchIndex.h"
#include "search/NativeSearchService.h"
#include "store/DatabaseManager.h"
#include "store/NativeLibraryService.h"

#include <QCoreApplication>
#include <QFile>
#include <cstdio>

namespace
{

/// Notes the longest time that any one event took.
class TimedApplication : public QCoreApplication
{
public:
    using QCoreApplication::QCoreApplication;

    bool notify(QObject *receiver, QEvent *event) override
    {
        bool handled = false;
        const Milliseconds taken = timeOf([&] { handled = QCoreApplication::notify(receiver, event); });
        m_longest = std::max(m_longest, taken);
        return handled;
    }

    Milliseconds takeLongest() { return std::exchange(m_longest, Milliseconds(0)); }

private:
    Milliseconds m_longest{0};
};

double residentMegabytes()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    constexpr double kPageBytes = 4096;
    return file.readAll().split(' ').value(1).toDouble() * kPageBytes / 1e6;
}

/// One bench of a library that is given away afterwards: it deletes and tags papers.
class Bench
{
public:
    Bench(TimedApplication &application, const char *papers)
        : m_application(application)
        , m_papers(papers)
    {
    }

    void run()
    {
        loading();
        typing();
        changing();
    }

private:
    void figure(const char *what, double value, const char *unit, const char *target) const
    {
        std::printf("%s papers: %s\t%.2f\t-\t%s\t%s\n", m_papers, what, value, unit, target);
    }

    /// What the operation takes in all, and the longest that it keeps the main thread.
    template <typename Operation> void operation(const char *what, Operation start)
    {
        m_application.takeLongest();
        Milliseconds beginning{0};
        const Milliseconds all = timeOf([&] {
            std::optional<QCoro::Task<>> task;
            beginning = timeOf([&] { task.emplace(start()); });
            QCoro::waitFor(*task);
        });
        const Milliseconds pause = std::max(beginning, m_application.takeLongest());
        std::printf("# %s: %s took %.1f ms\n", m_papers, what, all.count());
        figure(what, pause.count(), "ms", "most 50");
    }

    void loading()
    {
        std::vector<Milliseconds> times;
        for (int i = 0; i < 5; ++i)
            times.push_back(timeOf([&] { m_loaded = m_services.library().allPapers().result()->size(); }));
        figure("reading all papers", median(times).count(), "ms", "-");
        figure("reading all papers, the first time", times.front().count(), "ms", "-");
        operation("main thread held by the load", [&] { return m_vm.loadPapers(); });
        figure("resident after the load", residentMegabytes(), "MB", "most 300");
        operation("main thread held by a reload", [&] { return m_vm.loadPapers(); });
        operation("main thread held by loading tags", [&] { return m_vm.loadTags(); });
        figure("resident after the reload", residentMegabytes(), "MB", "most 300");
    }

    /// Types the query, then takes it back letter by letter.
    void type(const QString &query)
    {
        const auto keystroke = [&](qsizetype length) {
            m_keystrokes.push_back(timeOf([&] { m_vm.queryText = query.left(length); }));
            std::printf("# %s: %s: %lld papers, %.2f ms\n", m_papers, qPrintable(query.left(length)),
                        static_cast<long long>(m_vm.filteredPapers.value().size()),
                        m_keystrokes.back().count());
        };
        for (qsizetype length = 1; length <= query.size(); ++length)
            keystroke(length);
        for (qsizetype length = query.size() - 1; length >= 0; --length)
            keystroke(length);
    }

    void typing()
    {
        for (const char *query : {"author:an", "title:of", "filename:00 author:e", "year:1999 title:a",
                                  "title:saddlepoint", "title:ÜBER"})
            type(QString::fromUtf8(query));
        figure("a keystroke in a filter, the longest", percentile(m_keystrokes, 100).count(), "ms",
               "most 30");
        figure("a keystroke in a filter, median", median(m_keystrokes).count(), "ms", "-");
    }

    void changing()
    {
        const Paper paper = m_vm.papers.value().last();
        m_vm.select(paper);
        operation("main thread held by editing a paper", [&] {
            return m_vm.updatePaper(paper.id, {.title = QStringLiteral("zzz"), .authors = {}, .year = {}});
        });
        operation("main thread held by tagging a paper",
                  [&] { return m_vm.addTag(paper.id, QStringLiteral("Fresh")); });
        operation("main thread held by removing a paper", [&] { return m_vm.deletePaper(paper); });
        m_vm.queryText = QStringLiteral("year:1999");
        operation("main thread held by tagging the papers of a year",
                  [&] { return m_vm.tagVisiblePapers(QStringLiteral("Fresh")); });
        m_vm.queryText = QString();
        const Milliseconds listing = timeOf([&] { m_loaded = m_vm.tagsOnVisiblePapers().size(); });
        figure("main thread held by listing the tags of all", listing.count(), "ms", "most 50");
        figure("resident at the end", residentMegabytes(), "MB", "most 300");
    }

    TimedApplication &m_application;
    const char *m_papers;
    Services m_services{ServiceLocations::ofTheUser()};
    NullSystemSearchIndex m_index;
    CoreSpotlightIndexer m_publisher{m_index};
    SystemClock m_clock;
    LibraryViewModel m_vm{{.db = m_services.db(),
                           .library = m_services.library(),
                           .publisher = m_publisher,
                           .preferences = m_services.preferences(),
                           .clock = m_clock,
                           .importFlow = m_services.importFlow(),
                           .retagFlow = m_services.retagFlow(),
                           .search = [this](const QString &query) {
                               return m_services.search().search(query);
                           }}};
    qsizetype m_loaded = 0;
    std::vector<Milliseconds> m_keystrokes;
};

} // namespace

/// quirevault-bench-view-model PAPERS: the library that XDG_DATA_HOME names, which has PAPERS papers. Changes
/// the library: give it a copy.
int main(int argc, char **argv)
{
    TimedApplication application(argc, argv);
    if (argc != 2)
        return 2;
    Bench(application, argv[1]).run();
}
