// Runs the desktop program as it is and watches what its reader windows paint:
//     quirevault-bench-reader-window show FILE          prints when page 1 was painted, microseconds since
//     1970 quirevault-bench-reader-window arrive QUERY...    searches the library that XDG_DATA_HOME names
//     and opens
//                                                       results with Return; prints how long passages took
#include "Arrivals.h"
#include "PaintWatch.h"
#include "PaintedTime.h"
#include "app/OpenRequestArguments.h"
#include "desktop/DesktopProgram.h"
#include "reader/ReadingPlan.h"

#include <QDir>
#include <algorithm>
#include <array>
#include <cstring>

namespace
{
/// Whether the view has what it shows of page 1, as sharp as the screen.
bool hasFirstPage(const PDFKitView &view)
{
    const Viewpoint &viewpoint = view.viewpoint();
    if (!viewpoint.layout().hasSizes())
        return false;
    const PageStyle style =
        pageStyle(viewpoint, view.devicePixelRatioF(), view.isDarkMode(), view.cache().limitBytes());
    const auto tiles = tilesWithin(viewpoint, 0, style, QRectF(QPointF(), viewpoint.viewport()));
    return std::all_of(tiles.begin(), tiles.end(),
                       [&view](const PageTile &tile) { return view.cache().contains(tile); });
}

int show(char *program, const QString &path)
{
    QByteArrayList words = toArguments(
        {{.id = QUuid::createUuid(), .url = QUrl::fromLocalFile(QDir::current().absoluteFilePath(path))}});
    std::vector<char *> arguments{program};
    for (QByteArray &word : words)
        arguments.push_back(word.data());
    int count = int(arguments.size());
    arguments.push_back(nullptr);
    DesktopProgram desktop(count, arguments.data());
    PaintWatch watch;
    bool isOver = false;
    watch.painted = [&](const PDFKitView &view) {
        if (isOver || !hasFirstPage(view))
            return;
        isOver = true;
        QMetaObject::invokeMethod(&watch, tellPainted, Qt::QueuedConnection); // it is on the screen by then
    };
    desktop.application().installEventFilter(&watch);
    return desktop.run();
}

int arrive(char *program, const QStringList &queries)
{
    int count = 1;
    std::array<char *, 2> arguments{program, nullptr};
    DesktopProgram desktop(count, arguments.data());
    Arrivals arrivals(queries);
    PaintWatch watch;
    watch.painted = [&arrivals](PDFKitView &view) {
        arrivals.painted(view);
    };
    desktop.application().installEventFilter(&watch);
    return desktop.run();
}
} // namespace

int main(int argc, char **argv)
{
    if (argc == 3 && std::strcmp(argv[1], "show") == 0)
        return show(argv[0], QString::fromLocal8Bit(argv[2]));
    QStringList queries;
    for (int i = 2; i < argc; ++i)
        queries.append(QString::fromLocal8Bit(argv[i]));
    if (!queries.isEmpty() && std::strcmp(argv[1], "arrive") == 0)
        return arrive(argv[0], queries);
    std::fputs("quirevault-bench-reader-window show FILE | arrive QUERY...\n", stderr);
    return 2;
}
