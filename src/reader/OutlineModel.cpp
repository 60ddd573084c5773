#include "reader/OutlineModel.h"

#include <QFontMetrics>
#include <QGuiApplication>
#include <QTextDocument>

namespace
{
constexpr int kRowPadding = 8;
}

void OutlineModel::setOutline(const QList<OutlineElement> &outline)
{
    beginResetModel();
    m_outline = outline;
    m_nodes.assign(1, Node());
    addChildren(0, m_outline);
    endResetModel();
}

void OutlineModel::addChildren(std::size_t parent, const QList<OutlineElement> &children)
{
    const std::size_t first = m_nodes.size();
    m_nodes[parent].firstChild = first;
    m_nodes[parent].childCount = int(children.size());
    for (int row = 0; row < children.size(); ++row)
        m_nodes.push_back({.element = &children[row], .parent = parent, .row = row});
    for (int row = 0; row < children.size(); ++row)
        addChildren(first + std::size_t(row), children[row].children);
}

const OutlineModel::Node &OutlineModel::node(const QModelIndex &index) const
{
    return m_nodes[index.isValid() ? index.internalId() : 0];
}

const OutlineElement &OutlineModel::element(const QModelIndex &index) const
{
    return *node(index).element;
}

QModelIndex OutlineModel::index(int row, int column, const QModelIndex &parent) const
{
    if (!hasIndex(row, column, parent))
        return {};
    return createIndex(row, column, quintptr(node(parent).firstChild + std::size_t(row)));
}

QModelIndex OutlineModel::parent(const QModelIndex &child) const
{
    const std::size_t parent = node(child).parent;
    return parent == 0 ? QModelIndex() : createIndex(m_nodes[parent].row, 0, quintptr(parent));
}

int OutlineModel::rowCount(const QModelIndex &parent) const
{
    return node(parent).childCount;
}

int OutlineModel::columnCount(const QModelIndex &) const
{
    return 1;
}

QVariant OutlineModel::data(const QModelIndex &index, int role) const
{
    if (role == Qt::SizeHintRole)
        return QSize(0, QFontMetrics(QGuiApplication::font()).height() + kRowPadding);
    if (!index.isValid())
        return {};
    if (role == Qt::ToolTipRole) // which takes what looks like markup for markup
        return Qt::convertFromPlainText(element(index).label, Qt::WhiteSpaceNormal);
    return role == Qt::DisplayRole ? QVariant(element(index).label) : QVariant();
}
