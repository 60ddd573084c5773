#pragma once

#include "reader/OutlineElement.h"

#include <QAbstractItemModel>
#include <vector>

/// An outline as a tree of labels.
class OutlineModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    using QAbstractItemModel::QAbstractItemModel;

    void setOutline(const QList<OutlineElement> &outline);
    const OutlineElement &element(const QModelIndex &index) const;

    QModelIndex index(int row, int column, const QModelIndex &parent = {}) const override;
    QModelIndex parent(const QModelIndex &child) const override;
    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;

private:
    /// What an index points at.
    struct Node {
        const OutlineElement *element = nullptr; ///< null for the root
        std::size_t parent = 0;
        int row = 0;
        std::size_t firstChild = 0; ///< the others follow it
        int childCount = 0;
    };

    void addChildren(std::size_t parent, const QList<OutlineElement> &children);
    const Node &node(const QModelIndex &index) const;

    QList<OutlineElement> m_outline;
    std::vector<Node> m_nodes{Node()}; ///< the root first
};
