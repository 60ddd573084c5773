#include "ui/SidebarDelegate.h"

#include "reader/Fonts.h"
#include "ui/SidebarModel.h"

#include <QApplication>
#include <QLocale>
#include <QPainter>

namespace
{
constexpr int kRowHeightPx = 28; ///< chosen: dense, and a target that is easy to hit
constexpr int kMarginPx = 10;
constexpr int kGapPx = 8;
constexpr int kStylePaddingPx = 3; ///< what styles leave before a row's symbol

// Text that steps back behind the names, on the row's own background.
QColor quiet(const QStyleOptionViewItem &option)
{
    const bool isSelected = option.state & QStyle::State_Selected;
    // Of the active group: a heading is disabled only so that the keyboard passes over it.
    QColor color =
        option.palette.color(QPalette::Active, isSelected ? QPalette::HighlightedText : QPalette::WindowText);
    color.setAlphaF(isSelected ? 0.8F : 0.6F);
    return color;
}

// On the highlight a symbol takes the colour of the text.
void whitenSymbol(QStyleOptionViewItem &option)
{
    if (option.icon.isNull() || !(option.state & QStyle::State_Selected))
        return;
    const double scale = option.widget ? option.widget->devicePixelRatioF() : 1;
    QPixmap symbol = option.icon.pixmap(option.decorationSize, scale);
    QPainter painter(&symbol);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(symbol.rect(), option.palette.color(QPalette::HighlightedText));
    painter.end();
    option.icon = QIcon();
    option.icon.addPixmap(symbol, QIcon::Selected);
}

void paintHeading(QPainter *painter, const QStyleOptionViewItem &option)
{
    painter->setFont(boldFont(option.font, 0.9));
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
    const QStyle *style = row.widget ? row.widget->style() : QApplication::style();
    style->drawPrimitive(QStyle::PE_PanelItemViewItem, &row, painter, row.widget);
    whitenSymbol(row);
    // Symbol and name, beside the count.
    row.rect = inside.adjusted(-kStylePaddingPx, 0, -countWidth - kGapPx, 0);
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
