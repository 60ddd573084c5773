#include "ui/SidebarDelegate.h"

#include "ui/SidebarModel.h"

#include <QApplication>
#include <QLocale>
#include <QPainter>

namespace
{
constexpr int kRowHeightPx = 28; ///< chosen: dense, and a target that is easy to hit
constexpr int kMarginPx = 10;
constexpr int kGapPx = 8;

// Text that steps back behind the names, on the row's own background.
QColor quiet(const QStyleOptionViewItem &option)
{
    const bool isSelected = option.state & QStyle::State_Selected;
    QColor color = option.palette.color(isSelected ? QPalette::HighlightedText : QPalette::WindowText);
    color.setAlphaF(isSelected ? 0.8F : 0.6F);
    return color;
}

void paintHeading(QPainter *painter, const QStyleOptionViewItem &option)
{
    QFont font = option.font;
    font.setBold(true);
    font.setPointSizeF(font.pointSizeF() * 0.9);
    painter->setFont(font);
    painter->setPen(quiet(option));
    painter->drawText(option.rect.adjusted(kMarginPx, 0, 0, -4), Qt::AlignLeft | Qt::AlignBottom,
                      option.text);
}
} // namespace

void SidebarDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                            const QModelIndex &index) const
{
    QStyleOptionViewItem row = option;
    initStyleOption(&row, index);
    painter->save();
    const QVariant count = index.data(SidebarModel::CountRole);
    if (!count.isValid()) {
        paintHeading(painter, row);
        painter->restore();
        return;
    }

    const QString countText = QLocale().toString(count.toLongLong());
    const QRect inside = row.rect.adjusted(kMarginPx, 0, -kMarginPx, 0);
    const int countWidth = row.fontMetrics.horizontalAdvance(countText);
    // The style draws background, symbol, focus and name; only the name must leave room for the count.
    row.text = row.fontMetrics.elidedText(row.text, Qt::ElideRight,
                                          inside.width() - countWidth - 2 * kGapPx -
                                              (row.icon.isNull() ? 0 : row.decorationSize.width()));
    const QStyle *style = row.widget ? row.widget->style() : QApplication::style();
    style->drawControl(QStyle::CE_ItemViewItem, &row, painter, row.widget);
    painter->setPen(quiet(row));
    painter->drawText(inside, Qt::AlignRight | Qt::AlignVCenter, countText);
    painter->restore();
}

QSize SidebarDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const QSize hint = QStyledItemDelegate::sizeHint(option, index);
    return {hint.width(), std::max(kRowHeightPx, hint.height())};
}
