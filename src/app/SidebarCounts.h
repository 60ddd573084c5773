#pragma once

#include "app/SidebarItem.h"

#include <QHash>
#include <QObject>
#include <QProperty>
#include <qcorotask.h>

class NativeLibraryService;
class Preferences;

/// How many papers each row of the sidebar stands for. Main thread.
class SidebarCounts : public QObject
{
public:
    SidebarCounts(NativeLibraryService &library, Preferences &preferences);

    /// An item that is missing has no papers.
    QProperty<QHash<SidebarItem, qint64>> counts;

    /// Counts again; a failure is logged and keeps the counts.
    QCoro::Task<> load();

private:
    NativeLibraryService &m_library;
    Preferences &m_preferences;
};
