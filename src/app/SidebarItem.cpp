#include "app/SidebarItem.h"

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
