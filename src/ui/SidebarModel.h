#pragma once

#include "app/SidebarItem.h"

#include <QAbstractItemModel>
#include <QHash>
#include <QProperty>
#include <QStringList>
#include <optional>
#include <vector>

class LibraryViewModel;
class QMimeData;

/// The sidebar's rows: the sections "Library" and "Smart Tags", and under each what can be selected. Papers
/// dropped onto a tag, or onto "Currently Reading", are given it.
class SidebarModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    enum Section { Library, SmartTags, SectionCount };
    enum Role { CountRole = Qt::UserRole }; ///< how many papers the row stands for; none for a section

    explicit SidebarModel(LibraryViewModel &vm, QObject *parent = nullptr);

    QModelIndex section(Section section) const { return index(section, 0); }
    bool isSection(const QModelIndex &index) const { return index.isValid() && !index.parent().isValid(); }
    /// What the row selects; none for a section.
    std::optional<SidebarItem> item(const QModelIndex &index) const;
    /// The row of `item`; invalid when there is none.
    QModelIndex indexOf(const SidebarItem &item) const;

    QModelIndex index(int row, int column, const QModelIndex &parent = {}) const override;
    QModelIndex parent(const QModelIndex &child) const override;
    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

    QStringList mimeTypes() const override;
    Qt::DropActions supportedDropActions() const override;
    bool canDropMimeData(const QMimeData *data, Qt::DropAction action, int row, int column,
                         const QModelIndex &parent) const override;
    bool dropMimeData(const QMimeData *data, Qt::DropAction action, int row, int column,
                      const QModelIndex &parent) override;

private:
    void updateTags();
    void announceCounts();
    qint64 count(const SidebarItem &item) const;

    LibraryViewModel &m_vm;
    QStringList m_tags;
    std::vector<QPropertyNotifier> m_observers;
};
