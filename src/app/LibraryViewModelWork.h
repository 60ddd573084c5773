#pragma once

#include "app/LibraryViewModel.h"

#include <QCoroSignal>
#include <QtConcurrent>

// What the files of `LibraryViewModel` share about its work on other threads.

/// What a worker read for `loadPapers`.
struct LibraryViewModel::LoadedPapers {
    Result<QList<Paper>> papers;
    bool isWholeLibrary = false;
    bool isNews = false; ///< whether the papers differ from those that were shown when the load began
    QString selectedId;  ///< of the paper that was selected then
    Result<std::optional<Paper>> selected;
};

/// What a worker found for `filteredPapers`.
struct LibraryViewModel::FilteredPapers {
    QList<Paper> papers;
    bool isNews = false; ///< whether they differ from those that were shown
};

/// What work came to that reports to this thread in queued calls: after the last report, also when the work
/// is over before anyone waits for it.
template <typename T> QCoro::Task<T> afterReportsOf(QFuture<T> work)
{
    const QScopedPointer<QFutureWatcher<T>, QScopedPointerDeleteLater> watcher(new QFutureWatcher<T>);
    watcher->setFuture(work);
    co_await qCoro(watcher.get(), &QFutureWatcher<T>::finished);
    co_return work.result();
}

/// Lets a worker destroy what may hold 100,000 papers: on the main thread that would take several frames.
template <typename... T> void LibraryViewModel::destroyElsewhere(T... things)
{
    m_workers.start([... things = std::move(things)] {});
}

/// Assigns a list that is known to differ, without a comparison that may take longer than a frame: to the
/// property it comes after an empty one, which nobody is told of.
inline void assignDifferent(QProperty<QList<Paper>> &property, const QList<Paper> &list)
{
    if (!list.isEmpty())
        property.setValueBypassingBindings({});
    property = list;
}
