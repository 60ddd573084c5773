#pragma once

#include <QStyledItemDelegate>

/// Paints the rows of a `PassageListModel`: a title, a few lines of text with its matches in bold, and the
/// page.
class PassageDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
};
