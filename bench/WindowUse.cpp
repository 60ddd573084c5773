#include "WindowUse.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScrollBar>
#include <QToolBar>
#include <cstdio>

namespace
{
using namespace std::chrono_literals;

constexpr char kTyped[] = "title:network";
constexpr int kTypedLength = sizeof kTyped - 1;
constexpr int kScrollSteps = 300;
constexpr Milliseconds kNoticeable = 50ms;
} // namespace

WindowUse::WindowUse(QWidget *window, std::function<void()> whenDone)
    : m_window(window)
    , m_whenDone(std::move(whenDone))
    , m_phases(phases())
{
    connect(&m_timer, &QTimer::timeout, this, [this] { advance(); });
    m_timer.start(m_phases.front().pause);
}

std::vector<WindowUse::Phase> WindowUse::phases()
{
    const auto nothing = [](int) {
    };
    return {
        {"after-first-paint", 10, 100ms, nothing},
        {"loading-again", 20, 100ms,
         [this](int step) {
             refresh(step);
         }},
        {"filtering", kTypedLength + 10, 120ms,
         [this](int step) {
             typeFilter(step);
         }},
        {"clearing", 10, 100ms,
         [this](int step) {
             if (step == 0)
                 m_window->findChild<QLineEdit *>(QStringLiteral("searchField"))->clear();
         }},
        {"scrolling", kScrollSteps, 16ms,
         [this](int step) {
             scroll(step);
         }},
    };
}

void WindowUse::refresh(int step)
{
    if (step > 0)
        return;
    const auto *toolBar = m_window->findChild<QToolBar *>(QStringLiteral("libraryToolBar"));
    for (QAction *action : toolBar->actions()) {
        if (action->objectName() == u"refresh")
            action->trigger();
    }
}

void WindowUse::typeFilter(int step)
{
    if (step >= kTypedLength)
        return; // what the last key set off goes on
    auto *field = m_window->findChild<QLineEdit *>(QStringLiteral("searchField"));
    const QString text = QString(QLatin1Char(kTyped[step]));
    QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, text);
    QCoreApplication::sendEvent(field, &press);
}

void WindowUse::scroll(int step)
{
    auto *grid = m_window->findChild<QAbstractItemView *>(QStringLiteral("papers"));
    QScrollBar *bar = grid->verticalScrollBar();
    bar->setValue(static_cast<int>(static_cast<double>(bar->maximum()) * step / (kScrollSteps - 1)));
}

void WindowUse::advance()
{
    const Phase &phase = m_phases[m_phase];
    if (m_step < phase.steps)
        return phase.step(m_step++);
    report(phase.name);
    m_step = 0;
    if (++m_phase < m_phases.size())
        return m_timer.setInterval(m_phases[m_phase].pause);
    m_timer.stop();
    m_whenDone();
}

void WindowUse::report(const char *name)
{
    const std::vector<Milliseconds> waits = m_watch.takeWaits();
    const auto longer =
        std::count_if(waits.begin(), waits.end(), [](Milliseconds wait) { return wait > kNoticeable; });
    std::printf("%s-longest-wait-ms %.1f\n", name, percentile(waits, 100).count());
    std::printf("%s-waits-over-50-ms %d\n", name, static_cast<int>(longer));
}
