#include "ui/ImportPickerModel.h"

#include "platform/Paths.h"

#include <QLocale>
#include <algorithm>
#include <numeric>

namespace
{
constexpr qint64 kNotAskedFor = -3;
constexpr qint64 kOnItsWay = -2;

qsizetype nameStart(const QString &path)
{
    return path.lastIndexOf(u'/') + 1;
}
} // namespace

ImportPickerModel::ImportPickerModel(const QStringList &paths, QObject *parent)
    : QAbstractTableModel(parent)
    , m_ticked(static_cast<std::size_t>(paths.size()), true)
    , m_tickedCount(static_cast<int>(paths.size()))
    , m_shown(static_cast<std::size_t>(paths.size()))
    , m_sizes(static_cast<std::size_t>(paths.size()), kNotAskedFor)
{
    m_files.reserve(static_cast<std::size_t>(paths.size()));
    for (const QString &path : paths)
        m_files.push_back({path, path.toCaseFolded()});
    std::iota(m_shown.begin(), m_shown.end(), 0);
    connect(&m_reader, &FileSizes::arrived, this, &ImportPickerModel::storeSize);
}

void ImportPickerModel::setFilter(const QString &text)
{
    const QStringList words = text.toCaseFolded().split(u' ', Qt::SkipEmptyParts);
    beginResetModel();
    m_shown.clear();
    for (int file = 0; file < fileCount(); ++file) {
        const QString &searched = m_files[static_cast<std::size_t>(file)].searched;
        if (std::ranges::all_of(words, [&](const QString &word) { return searched.contains(word); }))
            m_shown.push_back(file);
    }
    endResetModel();
}

QStringList ImportPickerModel::tickedPaths() const
{
    QStringList paths;
    for (std::size_t file = 0; file < m_files.size(); ++file) {
        if (m_ticked[file])
            paths.append(m_files[file].path);
    }
    return paths;
}

int ImportPickerModel::shownTickedCount() const
{
    return static_cast<int>(std::ranges::count_if(
        m_shown, [this](int file) -> bool { return m_ticked[static_cast<std::size_t>(file)]; }));
}

void ImportPickerModel::tickShown(bool isTicked)
{
    for (const int file : m_shown)
        setTicked(file, isTicked);
    announceTicks(0, rowCount() - 1);
}

void ImportPickerModel::toggle(const QModelIndexList &rows)
{
    if (rows.isEmpty())
        return;
    const auto fileOf = [this](const QModelIndex &row) {
        return m_shown[static_cast<std::size_t>(row.row())];
    };
    const bool areAllTicked = std::ranges::all_of(rows, [&](const QModelIndex &row) -> bool {
        return m_ticked[static_cast<std::size_t>(fileOf(row))];
    });
    for (const QModelIndex &row : rows)
        setTicked(fileOf(row), !areAllTicked);
    const auto [first, last] = std::ranges::minmax(rows, {}, &QModelIndex::row);
    announceTicks(first.row(), last.row());
}

int ImportPickerModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_shown.size());
}

int ImportPickerModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant ImportPickerModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const int file = m_shown[static_cast<std::size_t>(index.row())];
    switch (role) {
    case Qt::DisplayRole:
        return text(file, index.column());
    case Qt::ToolTipRole:
        return m_files[static_cast<std::size_t>(file)].path;
    case Qt::CheckStateRole:
        if (index.column() != Name)
            return {};
        return m_ticked[static_cast<std::size_t>(file)] ? Qt::Checked : Qt::Unchecked;
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(Qt::AlignVCenter |
                                   (index.column() == Size ? Qt::AlignRight : Qt::AlignLeft));
    default:
        return {};
    }
}

bool ImportPickerModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (!index.isValid() || role != Qt::CheckStateRole)
        return false;
    setTicked(m_shown[static_cast<std::size_t>(index.row())], value.value<Qt::CheckState>() == Qt::Checked);
    announceTicks(index.row(), index.row());
    return true;
}

QVariant ImportPickerModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::TextAlignmentRole && section == Size)
        return QVariant::fromValue(Qt::AlignVCenter | Qt::AlignRight);
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case Name:
        return QStringLiteral("Name");
    case Folder:
        return QStringLiteral("Folder");
    default:
        return QStringLiteral("Size");
    }
}

Qt::ItemFlags ImportPickerModel::flags(const QModelIndex &index) const
{
    const Qt::ItemFlags flags = QAbstractTableModel::flags(index) | Qt::ItemNeverHasChildren;
    return index.column() == Name ? flags | Qt::ItemIsUserCheckable : flags;
}

QVariant ImportPickerModel::text(int file, int column) const
{
    const QString &path = m_files[static_cast<std::size_t>(file)].path;
    switch (column) {
    case Name:
        return path.mid(nameStart(path));
    case Folder:
        return pathForPeople(path.left(std::max<qsizetype>(1, nameStart(path) - 1)));
    default:
        return sizeText(file);
    }
}

/// Empty while it is read, which the first look at it starts: of 20,000 files few are ever looked at.
QString ImportPickerModel::sizeText(int file) const
{
    qint64 &size = m_sizes[static_cast<std::size_t>(file)];
    if (size == kNotAskedFor) {
        size = kOnItsWay;
        m_reader.request(file, m_files[static_cast<std::size_t>(file)].path);
    }
    return size < 0 ? QString() : QLocale().formattedDataSize(size, 1, QLocale::DataSizeTraditionalFormat);
}

void ImportPickerModel::setTicked(int file, bool isTicked)
{
    const auto at = static_cast<std::size_t>(file);
    if (m_ticked[at] == isTicked)
        return;
    m_ticked[at] = isTicked;
    m_tickedCount += isTicked ? 1 : -1;
}

void ImportPickerModel::announceTicks(int firstRow, int lastRow)
{
    if (lastRow >= firstRow)
        Q_EMIT dataChanged(index(firstRow, Name), index(lastRow, Name), {Qt::CheckStateRole});
    Q_EMIT ticksChanged();
}

void ImportPickerModel::storeSize(int file, qint64 bytes)
{
    m_sizes[static_cast<std::size_t>(file)] = bytes;
    const auto row = std::ranges::lower_bound(m_shown, file);
    if (row == m_shown.end() || *row != file)
        return;
    const QModelIndex cell = index(static_cast<int>(row - m_shown.begin()), Size);
    Q_EMIT dataChanged(cell, cell, {Qt::DisplayRole});
}
