#include "app/SidebarItem.h"

#include "platform/Preferences.h"
#include "store/NativeLibraryService.h"
#include "store/ReservedTags.h"

size_t qHash(const SidebarItem &item, size_t seed)
{
    return qHashMulti(seed, static_cast<int>(item.kind), item.tag);
}

std::optional<QString> tagFilter(const SidebarItem &item)
{
    switch (item.kind) {
    case SidebarItem::Kind::Tag:
        return item.tag;
    case SidebarItem::Kind::CurrentlyReading:
        return QString::fromLatin1(kCurrentlyReadingTag);
    case SidebarItem::Kind::All:
    case SidebarItem::Kind::RecentlyImported:
        break;
    }
    return {};
}

Result<QList<Paper>> papersOf(const SidebarItem &item, NativeLibraryService &library,
                              const Preferences &preferences)
{
    if (item.kind == SidebarItem::Kind::RecentlyImported) {
        const auto lastImport = preferences.text(QLatin1String(kLastImportDateKey));
        if (!lastImport)
            return QList<Paper>();
        return library.recentlyImportedPapers(*lastImport).result();
    }
    const std::optional<QString> tag = tagFilter(item);
    return (tag ? library.papersWithTag(*tag) : library.allPapers()).result();
}
