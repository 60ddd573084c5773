// quirevault-bench-screen PROGRAM ARGUMENTS...: starts a program on the X display and waits until it shows
// the page that `quirevault-bench-reader generate` marks with a band of a colour that no window has. Prints
// how many milliseconds that took, and ends the program.
#include "Figures.h"
#include "MarkedPage.h"

#include <QGuiApplication>
#include <QPixmap>
#include <QProcess>
#include <QScreen>
#include <csignal>
#include <cstdio>
#include <thread>
#include <unistd.h>

namespace
{
using namespace std::chrono_literals;

constexpr auto kPatience = 30s;
/// Pixels of the band: more than a thumbnail of the page has.
constexpr int kEnough = 4000;
constexpr int kTolerance = 12;

bool isMark(QRgb pixel)
{
    const QColor mark = kMarkColor;
    return std::abs(qRed(pixel) - mark.red()) <= kTolerance &&
           std::abs(qGreen(pixel) - mark.green()) <= kTolerance &&
           std::abs(qBlue(pixel) - mark.blue()) <= kTolerance;
}

bool isShown()
{
    const QImage screen =
        QGuiApplication::primaryScreen()->grabWindow(0).toImage().convertToFormat(QImage::Format_RGB32);
    int found = 0;
    for (int y = 0; y < screen.height() && found < kEnough; y += 2) {
        const auto *line = reinterpret_cast<const QRgb *>(screen.constScanLine(y));
        found += 2 * int(std::count_if(line, line + screen.width(), isMark));
    }
    return found >= kEnough;
}

/// In a process group of its own, so that its helpers end with it.
void start(QProcess &process, const QStringList &words)
{
    process.setProgram(words.first());
    process.setArguments(words.mid(1));
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.setChildProcessModifier([] { setpgid(0, 0); });
    process.start();
}
} // namespace

int main(int argc, char **argv)
{
    QGuiApplication application(argc, argv);
    const QStringList words = QCoreApplication::arguments().mid(1);
    if (words.isEmpty() || isShown())
        return 2;
    QProcess process;
    bool isThere = false;
    const auto started = std::chrono::steady_clock::now();
    start(process, words);
    while (!isThere && std::chrono::steady_clock::now() - started < kPatience) {
        std::this_thread::sleep_for(3ms);
        isThere = isShown();
    }
    const Milliseconds took = std::chrono::steady_clock::now() - started;
    kill(-pid_t(process.processId()), SIGTERM);
    if (!process.waitForFinished(3000))
        kill(-pid_t(process.processId()), SIGKILL);
    process.waitForFinished();
    if (isThere)
        std::printf("%.1f\n", took.count());
    return isThere ? 0 : 1;
}
