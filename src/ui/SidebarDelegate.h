#pragma once

#include <QStyledItemDelegate>

/// Draws the sidebar's rows: a quiet heading for a section, else symbol, name and the count of papers.
class SidebarDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
};
