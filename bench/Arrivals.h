#pragma once

#include "Figures.h"

#include <QObject>
#include <QStringList>
#include <QTimer>
#include <chrono>
#include <vector>

class PDFKitView;
class QAbstractItemView;
class QWidget;

/// Uses a library window: searches for one query after another and opens results with Return. Prints how long
/// it took from the key until the lit passage was painted, and how many arrived without one; then quits.
class Arrivals : public QObject
{
public:
    explicit Arrivals(const QStringList &queries);

    /// To be told of every painting of a reader's pages.
    void painted(PDFKitView &view);

private:
    void look();
    void search();
    void openNext();
    void arrived(PDFKitView &view);
    void giveUp();
    void leave(QWidget *window);
    void report();
    QAbstractItemView *results() const;

    QStringList m_queries;
    int m_row = 0;
    QWidget *m_library = nullptr;
    bool m_isUnderWay = false;
    std::chrono::steady_clock::time_point m_pressed;
    std::vector<Milliseconds> m_lit;
    int m_unlit = 0;
    QTimer m_patience; ///< until an arrival counts as one without a passage
};
