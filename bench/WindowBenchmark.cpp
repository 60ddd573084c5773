// Runs the desktop program as it is on the library that XDG_DATA_HOME names, notes when the first cards are
// painted, and with "use" goes on to use the window while it watches how long the main thread keeps a person
// waiting. Prints one line a figure, its name and value.
//
//     quirevault-bench-window SECONDS-SINCE-EPOCH start|use|empty
#include "WindowUse.h"
#include "desktop/DesktopProgram.h"

#include <QAbstractItemView>
#include <QEvent>
#include <QFile>
#include <QStandardItemModel>
#include <QTableView>
#include <QTimer>
#include <QWidget>
#include <chrono>
#include <cstdio>
#include <cstring>

namespace
{

/// A line of /proc/self/status in MB, such as "VmRSS".
int statusMb(const QByteArray &field)
{
    QFile status(QStringLiteral("/proc/self/status"));
    static_cast<void>(status.open(QIODevice::ReadOnly));
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith(field) && line[field.size()] == ':')
            return line.simplified().split(' ').at(1).toInt() / 1024;
    }
    return -1;
}

double secondsSinceEpoch()
{
    return std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count();
}

/// Waits for the first painted grid that has cards.
class FirstPaint : public QObject
{
public:
    FirstPaint(double startedAt, std::function<void(QWidget *window)> then)
        : m_startedAt(startedAt)
        , m_then(std::move(then))
    {
    }

    bool eventFilter(QObject *object, QEvent *event) override
    {
        if (m_isOver || event->type() != QEvent::Paint)
            return false;
        const auto *grid = qobject_cast<QAbstractItemView *>(object->parent());
        if (!grid || grid->objectName() != u"papers" || grid->model()->rowCount() == 0)
            return false;
        m_isOver = true;
        QMetaObject::invokeMethod(
            this, [this, grid] { tell(grid->window()); }, Qt::QueuedConnection);
        return false;
    }

private:
    /// The painting is done by now.
    void tell(QWidget *window)
    {
        std::printf("first-paint-ms %.1f\n", (secondsSinceEpoch() - m_startedAt) * 1000);
        std::printf("resident-mb %d\n", statusMb("VmRSS"));
        m_then(window);
    }

    double m_startedAt;
    std::function<void(QWidget *)> m_then;
    bool m_isOver = false;
};

} // namespace

/// The floor: an empty window of Qt's.
int showEmptyWindow(int &argc, char **argv, double startedAt)
{
    QApplication application(argc, argv);
    QTableView table; // what the watch takes for the grid
    QStandardItemModel model(1, 1);
    table.setModel(&model);
    table.setObjectName(QStringLiteral("papers"));
    FirstPaint firstPaint(startedAt, [](QWidget *window) { window->close(); });
    application.installEventFilter(&firstPaint);
    table.show();
    return QApplication::exec();
}

/// When the process was started, by the shell's clock; then what to do: "start", "use" or "empty".
int main(int argc, char **argv)
{
    if (argc != 3)
        return 2;
    const bool isUsed = std::strcmp(argv[2], "use") == 0;
    const double startedAt = QByteArray(argv[1]).toDouble();
    if (std::strcmp(argv[2], "empty") == 0)
        return showEmptyWindow(argc, argv, startedAt);
    argc = 1; // the rest is not for the program
    DesktopProgram program(argc, argv);
    std::unique_ptr<WindowUse> use;
    FirstPaint firstPaint(startedAt, [&](QWidget *window) {
        if (isUsed)
            use = std::make_unique<WindowUse>(window, [window] { window->close(); });
        else // what the covers in sight and the sidebar's counts still cost belongs to the memory's peak
            QTimer::singleShot(1000, window, [window] { window->close(); });
    });
    program.application().installEventFilter(&firstPaint);
    const int status = program.run();
    std::printf("peak-mb %d\n", statusMb("VmHWM"));
    return status;
}
