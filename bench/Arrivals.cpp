#include "Arrivals.h"

#include "reader/PDFKitView.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <cstdio>

namespace
{
using namespace std::chrono_literals;

/// Of each query, so that no single one decides.
constexpr int kResultsOfQuery = 10;
/// Covers, the pause after typing and the search itself.
constexpr auto kUntilResults = 3s;
constexpr auto kPatience = 3s;
/// Until the window of one result and its engine are gone.
constexpr auto kBetween = 400ms;
} // namespace

Arrivals::Arrivals(const QStringList &queries)
    : m_queries(queries)
{
    m_patience.setSingleShot(true);
    connect(&m_patience, &QTimer::timeout, this, &Arrivals::giveUp);
    QTimer::singleShot(kUntilResults, this, &Arrivals::search); // the library's own start is over by then
}

QAbstractItemView *Arrivals::results() const
{
    return m_library->findChild<QAbstractItemView *>(QStringLiteral("results"));
}

void Arrivals::search()
{
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (window->objectName() == u"libraryWindow")
            m_library = window;
    }
    if (!m_library)
        qFatal("There is no library window.");
    if (m_queries.isEmpty())
        return report();
    m_row = 0;
    m_library->findChild<QLineEdit *>(QStringLiteral("searchField"))->setText(m_queries.takeFirst());
    QTimer::singleShot(kUntilResults, this, &Arrivals::openNext);
}

void Arrivals::openNext()
{
    QAbstractItemView *grid = results();
    if (m_row >= std::min(kResultsOfQuery, grid->model()->rowCount()))
        return search();
    m_library->activateWindow();
    grid->setFocus();
    grid->setCurrentIndex(grid->model()->index(m_row++, 0));
    m_isUnderWay = true;
    m_patience.start(kPatience);
    m_pressed = std::chrono::steady_clock::now();
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QCoreApplication::sendEvent(grid, &press);
}

void Arrivals::painted(PDFKitView &view)
{
    if (!m_isUnderWay || !view.isSharp() || !view.currentSelection())
        return;
    m_isUnderWay = false;
    QMetaObject::invokeMethod(
        this, [this, &view] { arrived(view); }, Qt::QueuedConnection); // it is on the screen by then
}

void Arrivals::arrived(PDFKitView &view)
{
    m_lit.push_back(std::chrono::steady_clock::now() - m_pressed);
    m_patience.stop();
    leave(view.window());
}

void Arrivals::giveUp()
{
    m_isUnderWay = false;
    ++m_unlit;
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (window->objectName() == u"readerWindow")
            return leave(window);
    }
    qFatal("Return opened no window.");
}

void Arrivals::leave(QWidget *window)
{
    window->close();
    QTimer::singleShot(kBetween, this, &Arrivals::openNext);
}

void Arrivals::report()
{
    if (m_lit.empty())
        qFatal("No passage was lit.");
    std::printf("lit\t%zu\nunlit\t%d\nmedian ms\t%.1f\n90%% ms\t%.1f\nlongest ms\t%.1f\n", m_lit.size(),
                m_unlit, median(m_lit).count(), percentile(m_lit, 90).count(),
                percentile(m_lit, 100).count());
    m_library->close();
}
