#include "ui/SidebarModel.h"

#include "app/LibraryViewModel.h"
#include "ui/DragContent.h"
#include "ui/PaperListModel.h"
#include "ui/Symbols.h"

#include <QMimeData>
#include <algorithm>
#include <array>

namespace
{
// A row's section is kept in the index; a section's own index has none.
constexpr quintptr kNoSection = SidebarModel::SectionCount;

struct LibraryRow {
    const char *title;
    Symbol symbol;
    SidebarItem::Kind kind;
};

constexpr std::array kLibraryRows = {
    LibraryRow{"All Papers", Symbol::AllPapers, SidebarItem::Kind::All},
    LibraryRow{"Currently Reading", Symbol::CurrentlyReading, SidebarItem::Kind::CurrentlyReading},
    LibraryRow{"Recently Imported", Symbol::RecentlyImported, SidebarItem::Kind::RecentlyImported},
};

QString sectionTitle(int section)
{
    return section == SidebarModel::Library ? QStringLiteral("Library") : QStringLiteral("Smart Tags");
}

QString spokenCount(qint64 count)
{
    return count == 1 ? QStringLiteral("1 paper") : QStringLiteral("%1 papers").arg(count);
}
} // namespace

SidebarModel::SidebarModel(LibraryViewModel &vm, QObject *parent)
    : QAbstractItemModel(parent)
    , m_vm(vm)
    , m_tags(vm.visibleTags.value())
{
    m_observers.push_back(m_vm.visibleTags.addNotifier([this] { updateTags(); }));
    m_observers.push_back(m_vm.sidebarCounts().counts.addNotifier([this] { announceCounts(); }));
}

std::optional<SidebarItem> SidebarModel::item(const QModelIndex &index) const
{
    if (!index.isValid() || isSection(index))
        return {};
    if (index.internalId() == SmartTags)
        return SidebarItem::ofTag(m_tags.at(index.row()));
    return SidebarItem{kLibraryRows.at(static_cast<std::size_t>(index.row())).kind, {}};
}

QModelIndex SidebarModel::indexOf(const SidebarItem &item) const
{
    if (item.isTag()) {
        const auto row = static_cast<int>(m_tags.indexOf(item.tag));
        return row < 0 ? QModelIndex() : index(row, 0, section(SmartTags));
    }
    const auto *const found = std::ranges::find(kLibraryRows, item.kind, &LibraryRow::kind);
    return index(static_cast<int>(found - kLibraryRows.begin()), 0, section(Library));
}

QModelIndex SidebarModel::index(int row, int column, const QModelIndex &parent) const
{
    if (!hasIndex(row, column, parent))
        return {};
    return createIndex(row, column, parent.isValid() ? static_cast<quintptr>(parent.row()) : kNoSection);
}

QModelIndex SidebarModel::parent(const QModelIndex &child) const
{
    if (!child.isValid() || child.internalId() == kNoSection)
        return {};
    return createIndex(static_cast<int>(child.internalId()), 0, kNoSection);
}

int SidebarModel::rowCount(const QModelIndex &parent) const
{
    if (!parent.isValid())
        return SectionCount;
    if (!isSection(parent))
        return 0;
    return parent.row() == Library ? static_cast<int>(kLibraryRows.size()) : static_cast<int>(m_tags.size());
}

int SidebarModel::columnCount(const QModelIndex &) const
{
    return 1;
}

QVariant SidebarModel::data(const QModelIndex &index, int role) const
{
    const std::optional<SidebarItem> shown = item(index);
    if (!shown)
        return role == Qt::DisplayRole && index.isValid() ? sectionTitle(index.row()) : QVariant();

    const LibraryRow *fixed =
        shown->isTag() ? nullptr : &kLibraryRows.at(static_cast<std::size_t>(index.row()));
    const QString title = fixed ? QString(QLatin1String(fixed->title)) : shown->tag;
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
        return title;
    case Qt::DecorationRole:
        return fixed ? QVariant(symbolIcon(fixed->symbol)) : QVariant();
    case CountRole:
        return count(*shown);
    case Qt::AccessibleTextRole:
        return QString(title + u", " + spokenCount(count(*shown)));
    default:
        return {};
    }
}

Qt::ItemFlags SidebarModel::flags(const QModelIndex &index) const
{
    const std::optional<SidebarItem> shown = item(index);
    if (!shown)
        return Qt::NoItemFlags; // the arrow keys pass over it
    const Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
    return tagFilter(*shown) ? flags | Qt::ItemIsDropEnabled : flags;
}

QStringList SidebarModel::mimeTypes() const
{
    return {QString::fromLatin1(kPaperIdsMimeType)};
}

Qt::DropActions SidebarModel::supportedDropActions() const
{
    return Qt::CopyAction; // nothing leaves where it was dragged from
}

bool SidebarModel::canDropMimeData(const QMimeData *data, Qt::DropAction, int row, int,
                                   const QModelIndex &parent) const
{
    const std::optional<SidebarItem> target = item(parent);
    return isCardDrag(data) && row < 0 && target && tagFilter(*target);
}

bool SidebarModel::dropMimeData(const QMimeData *data, Qt::DropAction action, int row, int column,
                                const QModelIndex &parent)
{
    if (!canDropMimeData(data, action, row, column, parent))
        return false;
    const std::optional<SidebarItem> target = item(parent);
    const QStringList ids = draggedPaperIds(data);
    for (const QString &id : ids) {
        if (target->isTag())
            m_vm.addTag(id, target->tag);
        else
            m_vm.setCurrentlyReading(id, true);
    }
    return true;
}

/// Only the rows between the first and the last difference change, so a view keeps its place.
void SidebarModel::updateTags()
{
    const QStringList tags = m_vm.visibleTags.value();
    const auto [oldStart, newStart] = std::ranges::mismatch(m_tags, tags);
    auto oldEnd = m_tags.cend();
    auto newEnd = tags.cend();
    while (oldEnd != oldStart && newEnd != newStart && *std::prev(oldEnd) == *std::prev(newEnd)) {
        --oldEnd;
        --newEnd;
    }
    const auto first = static_cast<int>(newStart - tags.cbegin());
    const auto removed = static_cast<int>(oldEnd - oldStart);
    const auto inserted = static_cast<int>(newEnd - newStart);
    if (removed > 0) {
        beginRemoveRows(section(SmartTags), first, first + removed - 1);
        m_tags.remove(first, removed);
        endRemoveRows();
    }
    if (inserted > 0) {
        beginInsertRows(section(SmartTags), first, first + inserted - 1);
        m_tags = tags;
        endInsertRows();
    }
}

void SidebarModel::announceCounts()
{
    for (const Section under : {Library, SmartTags}) {
        const int rows = rowCount(section(under));
        if (rows > 0)
            Q_EMIT dataChanged(index(0, 0, section(under)), index(rows - 1, 0, section(under)),
                               {CountRole, Qt::AccessibleTextRole});
    }
}

qint64 SidebarModel::count(const SidebarItem &item) const
{
    return m_vm.sidebarCounts().counts.value().value(item, 0);
}
