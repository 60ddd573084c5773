// Times the frames of a library grid over 100,000 papers and prints one figure a line, in the form that
// bench/run reads.
#include "Figures.h"
#include "GeneratedCovers.h"
#include "app/LibraryViewModel.h"
#include "app/Services.h"
#include "ui/CoverCache.h"
#include "ui/LibraryGrid.h"
#include "ui/PaperGrid.h"

#include <QApplication>
#include <QScrollBar>
#include <QTemporaryDir>
#include <cstdio>
#include <ctime>
#include <thread>

namespace
{
using namespace std::chrono_literals;

constexpr int kPapers = 100'000;
constexpr int kCovers = 4'000; ///< cover files, shared by the papers in turn; more than the cache can hold
constexpr int kFrames = 1'000;
constexpr Milliseconds kFrame = 16ms; ///< of a screen that shows 60 a second
constexpr char kFrameTarget[] = "most 16";
constexpr char kKeystrokeTarget[] = "most 30";

/// The paths of new cover files; none when they cannot be written, which is told.
QStringList writeCovers(const QString &folder)
{
    QStringList ids;
    for (int i = 0; i < kCovers; ++i)
        ids.append(QString::number(i));
    if (const auto written = writeGeneratedCovers(folder, ids); !written) {
        std::fprintf(stderr, "%s\n", qPrintable(written.error().message()));
        return {};
    }
    QStringList paths;
    for (const QString &id : ids)
        paths.append(folder + u'/' + id + u".jpg");
    return paths;
}

QList<Paper> makePapers(const QStringList &covers)
{
    QList<Paper> papers;
    papers.reserve(kPapers);
    for (int i = 0; i < kPapers; ++i)
        papers.append({.id = QStringLiteral("paper-%1").arg(i),
                       .title = QStringLiteral("On the %1th decomposition of sparse operators in hyperbolic "
                                               "lattices, with a note on convergence")
                                    .arg(i),
                       .authors = QStringLiteral("Ada Example, Ben Sample, C. D. Third %1").arg(i % 977),
                       .year = 1950 + i % 75,
                       .pageCount = 12,
                       .coverPath = covers.at(i % covers.size()),
                       .filepath = QStringLiteral("/nowhere/paper-%1.pdf").arg(i),
                       .tags = {}});
    return papers;
}

/// As loading them does.
void setPapers(LibraryViewModel &vm, const QList<Paper> &papers)
{
    vm.papers = papers;
    vm.filteredPapers = papers;
}

/// Runs everything that is due: arrived covers, layout, painting.
void settle()
{
    QApplication::sendPostedEvents();
    QApplication::processEvents();
}

/// What the calling thread has used of the processor: on a machine that is busy with other things, the better
/// measure of what a frame costs.
Milliseconds processorTime()
{
    timespec spent{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &spent);
    return std::chrono::seconds(spent.tv_sec) + std::chrono::nanoseconds(spent.tv_nsec);
}

struct Frames {
    std::vector<Milliseconds> wall;
    std::vector<Milliseconds> processor; ///< of the main thread
};

/// Times `step` and all it leads to on the main thread, once a frame of the screen, so that the workers read
/// covers at the pace they really have.
template <typename Step> Frames framesOf(int frames, Step step)
{
    Frames times;
    for (int frame = 0; frame < frames; ++frame) {
        const Milliseconds before = processorTime();
        times.wall.push_back(timeOf([&] {
            step(frame);
            settle();
        }));
        times.processor.push_back(processorTime() - before);
        if (times.wall.back() < kFrame)
            std::this_thread::sleep_for(kFrame - times.wall.back());
    }
    return times;
}

void print(const QString &what, const Frames &times, const char *target)
{
    const auto line = [&](const char *which, Milliseconds time, const char *aim) {
        std::printf("%s, %s\t%.3f\t-\tms\t%s\n", qPrintable(what), which, time.count(), aim);
    };
    line("median", median(times.wall), "-");
    line("99th of 100", percentile(times.wall, 99), target);
    line("worst", percentile(times.wall, 100), "-");
    line("99th of 100, processor", percentile(times.processor, 99), "-");
    line("worst, processor", percentile(times.processor, 100), "-");
}

void measureScrolling(LibraryGrid &grid, const QString &size)
{
    QScrollBar *bar = grid.findChild<PaperGrid *>()->verticalScrollBar();
    const double way = bar->maximum();
    print(u"grid " + size + u", scrolled end to end",
          framesOf(kFrames, [&](int frame) { bar->setValue(int(way * frame / (kFrames - 1))); }),
          kFrameTarget);
    bar->setValue(0);
    print(u"grid " + size + u", scrolled by the wheel",
          framesOf(kFrames, [&](int frame) { bar->setValue(frame * 48); }), kFrameTarget);
    bar->setValue(0);
}

void measureKeystrokes(LibraryViewModel &vm)
{
    const QString typed = QStringLiteral("title:\"decomposition of sparse\" author:sample");
    print(QStringLiteral("a filter's keystroke, 100,000 papers"),
          framesOf(int(typed.size()), [&](int key) { vm.queryText = typed.left(key + 1); }),
          kKeystrokeTarget);
    vm.queryText = QString();
}

/// What of a keystroke is the grid's: the list is there already.
void measureNewLists(LibraryViewModel &vm, const QList<Paper> &papers)
{
    QList<QList<Paper>> lists;
    for (int part = 1; part < 20; ++part) {
        QList<Paper> list;
        for (int i = part; i < kPapers; i += part)
            list.append(papers.at(i));
        lists.append(list);
    }
    print(QStringLiteral("another list of up to 100,000 papers"),
          framesOf(int(lists.size()), [&](int i) { vm.filteredPapers = lists.at(i); }), kKeystrokeTarget);
    vm.filteredPapers = papers;
}

void measureReload(LibraryViewModel &vm, const QList<Paper> &papers)
{
    QList<Paper> changed = papers;
    print(QStringLiteral("one paper of 100,000 changed"),
          framesOf(20,
                   [&](int round) {
                       changed[kPapers / 2].title = QString::number(round);
                       setPapers(vm, changed);
                   }),
          "-");
}
} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    const QTemporaryDir folder;
    const QStringList covers = writeCovers(folder.filePath(QStringLiteral("covers")));
    if (covers.isEmpty())
        return 1;
    Services services(
        {folder.filePath(QStringLiteral("library.db")), folder.filePath(QStringLiteral("covers"))});
    LibraryViewModel vm(LibraryViewModel::Collaborators::of(services));
    CoverCache cache;
    LibraryGrid grid(vm, cache, [](const PDFOpenRequest &) {});
    const QList<Paper> papers = makePapers(covers);
    grid.show();
    print(QStringLiteral("first frame of 100,000 papers"), framesOf(1, [&](int) { setPapers(vm, papers); }),
          "-");
    for (const QSize size : {QSize(1000, 800), QSize(1920, 1080)}) {
        grid.resize(size);
        measureScrolling(grid, QStringLiteral("%1x%2").arg(size.width()).arg(size.height()));
    }
    measureNewLists(vm, papers);
    measureKeystrokes(vm);
    measureReload(vm, papers);
    return 0;
}
