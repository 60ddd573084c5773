#include "app/SidebarCounts.h"

#include "base/Log.h"
#include "platform/Preferences.h"
#include "store/NativeLibraryService.h"
#include "store/ReservedTags.h"

#include <QPointer>
#include <qcorofuture.h>

namespace
{
QHash<SidebarItem, qint64> countsOf(const PaperCounts &papers)
{
    using Kind = SidebarItem::Kind;
    QHash<SidebarItem, qint64> counts;
    const auto insert = [&counts](const SidebarItem &item, qint64 count) {
        if (count > 0)
            counts.insert(item, count);
    };
    for (auto tag = papers.byTag.begin(); tag != papers.byTag.end(); ++tag)
        insert(SidebarItem::ofTag(tag.key()), tag.value());
    insert({.kind = Kind::All, .tag = {}}, papers.all);
    insert({.kind = Kind::RecentlyImported, .tag = {}}, papers.recentlyImported);
    insert({.kind = Kind::CurrentlyReading, .tag = {}},
           papers.byTag.value(QLatin1String(kCurrentlyReadingTag)));
    return counts;
}
} // namespace

SidebarCounts::SidebarCounts(NativeLibraryService &library, Preferences &preferences)
    : m_library(library)
    , m_preferences(preferences)
{
}

QCoro::Task<> SidebarCounts::load()
{
    const QPointer self(this);
    const QFuture<Result<PaperCounts>> counting =
        m_library.paperCounts(m_preferences.text(QLatin1String(kLastImportDateKey)));
    const Result<PaperCounts> counted = co_await counting;
    if (!self)
        co_return;
    if (counted)
        counts = countsOf(*counted);
    else
        logLine(u"SidebarCounts: Error counting papers: " + counted.error().message());
}
