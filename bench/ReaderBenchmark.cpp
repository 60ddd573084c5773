// Measures the reader's view:
//     quirevault-bench-reader generate FILE PAGES   writes a document of PAGES full pages of text
//     quirevault-bench-reader scroll FILE SECONDS   scrolls a page a second; prints main-thread times
//     quirevault-bench-reader read FILE             looks at every page; prints peaks of memory
// PDF documents are read by the engine next to the program.
#include "Figures.h"
#include "MarkedPage.h"
#include "PaintedTime.h"
#include "ReaderFrames.h"
#include "pdf/EngineDocument.h"
#include "platform/InputFile.h"
#include "reader/PDFKitView.h"
#include "reader/ReaderDocument.h"
#include "support/PdfBuilder.h"

#include <QApplication>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QFutureWatcher>
#include <QTimer>

namespace
{
Result<std::unique_ptr<PDFDocument>> openEngine(const QString &path, std::stop_token stop)
{
    const Result<InputFile> file = InputFile::open(path);
    if (!file)
        return file.error();
    return EngineDocument::open(*file, {}, stop);
}

/// A view of a file in a window of its own.
class Reading
{
public:
    explicit Reading(const QString &path)
        : document([path](const std::optional<QString> &, std::stop_token stop) {
            return openEngine(path, std::move(stop));
        })
    {
        QFuture<Result<void>> opening = document.open();
        view.resize(kBenchWindow);
        view.show();
        opening.then(&view, [this](const Result<void> &opened) {
            if (opened)
                view.setDocument(&document);
            else
                qFatal("%s", qPrintable(opened.error().message()));
        });
    }

    void untilSharp()
    {
        if (view.isSharp())
            return;
        QEventLoop loop;
        QObject::connect(&view, &PDFKitView::becameSharp, &loop, &QEventLoop::quit);
        loop.exec();
    }

    ReaderDocument document;
    PDFKitView view;
};

void wait(std::chrono::milliseconds time)
{
    QEventLoop loop;
    QTimer::singleShot(time, &loop, &QEventLoop::quit);
    loop.exec();
}

/// A band above the text.
QByteArray firstPageMark()
{
    const auto part = [](double share) -> QByteArray {
        return QByteArray::number(share, 'f', 3) + ' ';
    };
    return part(kMarkColor.redF()) + part(kMarkColor.greenF()) + part(kMarkColor.blueF()) +
           "rg 72 740 480 30 re f";
}

QByteArray documentOf(int pages)
{
    PdfBuilder builder;
    for (int page = 0; page < pages; ++page) {
        QStringList lines;
        for (int line = 0; line < 42; ++line)
            lines.append(QStringLiteral("Page %1, line %2: the saddlepoint of a matrix is where its rows end")
                             .arg(page + 1)
                             .arg(line + 1));
        builder.page(PdfPage{.lines = lines, .drawing = page == 0 ? firstPageMark() : QByteArray()});
    }
    return builder.build();
}

int generate(const QString &path, int pages)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(documentOf(pages)) > 0 ? 0 : 1;
}

/// Scrolls for `time` at a page a second, in steps of 60 a second.
void scrollFor(PDFKitView &view, std::chrono::milliseconds time)
{
    const double step = (view.viewpoint().layout().rect(0, view.viewpoint().scale()).height() + 12) / 60;
    QTimer frames;
    frames.setTimerType(Qt::PreciseTimer);
    QObject::connect(&frames, &QTimer::timeout, [&] {
        ReaderFrames::begin();
        view.scrollBy({0, step}, PDFKitView::Motion::Instant);
    });
    frames.start(std::chrono::milliseconds(16));
    wait(time);
}

int scroll(const QString &path, int seconds)
{
    Reading reading(path);
    reading.untilSharp();
    wait(std::chrono::milliseconds(500));
    ReaderFrames::clear();
    std::vector<Milliseconds> untilSharp;
    for (int second = 0; second < seconds; second += 5) {
        scrollFor(reading.view, std::chrono::milliseconds(4937)); // comes to rest anywhere on a page
        untilSharp.push_back(timeOf([&] { reading.untilSharp(); }));
        wait(std::chrono::milliseconds(200));
    }
    for (const auto &[name, clock] : {std::pair("frame ms", &FrameTime::wall),
                                      std::pair("frame's processor ms", &FrameTime::processor)}) {
        const std::vector<Milliseconds> frames = ReaderFrames::times(clock);
        std::printf("median %s\t%.2f\n99%% %s\t%.2f\nlongest %s\t%.2f\n", name, median(frames).count(), name,
                    percentile(frames, 99).count(), name, percentile(frames, 100).count());
    }
    std::printf("median until sharp ms\t%.2f\nlongest until sharp ms\t%.2f\n", median(untilSharp).count(),
                percentile(untilSharp, 100).count());
    return 0;
}

/// The peak of a process's own memory, in MB.
double peakMB(const QString &process)
{
    QFile status(u"/proc/" + process + u"/status");
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith("VmHWM:"))
            return line.mid(6).trimmed().chopped(3).toDouble() / 1024;
    }
    return 0;
}

/// The engine is this process's only child.
QString engineProcess()
{
    const QString self = QString::number(QCoreApplication::applicationPid());
    QFile children(u"/proc/" + self + u"/task/" + self + u"/children");
    for (const QString &task :
         QDir(u"/proc/" + self + u"/task").entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile ofTask(u"/proc/" + self + u"/task/" + task + u"/children");
        if (!ofTask.open(QIODevice::ReadOnly))
            continue;
        const QByteArray process = ofTask.readAll().trimmed();
        if (!process.isEmpty())
            return QString::fromLatin1(process.split(' ').first());
    }
    return {};
}

int read(const QString &path)
{
    Reading reading(path);
    reading.untilSharp();
    const Milliseconds took = timeOf([&] {
        for (qint64 page = 1; page < reading.view.viewpoint().layout().pageCount(); ++page) {
            reading.view.goToPage(page);
            reading.untilSharp();
        }
    });
    std::printf("pages\t%lld\nseconds\t%.1f\n", reading.view.viewpoint().layout().pageCount(),
                took.count() / 1000);
    std::printf("app MB\t%.1f\nengine MB\t%.1f\n", peakMB(QStringLiteral("self")), peakMB(engineProcess()));
    return 0;
}
} // namespace

int main(int argc, char **argv)
{
    FrameApplication application(argc, argv);
    const QStringList words = QCoreApplication::arguments();
    const QString command = words.value(1);
    if (command == u"generate" && words.size() == 4)
        return generate(words[2], words[3].toInt());
    if (command == u"scroll" && words.size() == 4)
        return scroll(words[2], words[3].toInt());
    if (command == u"read" && words.size() == 3)
        return read(words[2]);
    std::fputs("quirevault-bench-reader generate FILE PAGES | scroll FILE SECONDS | read FILE\n", stderr);
    return 2;
}
