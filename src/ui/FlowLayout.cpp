#include "ui/FlowLayout.h"

#include "ui/FlowArrangement.h"

#include <QStyle>
#include <QWidget>

FlowLayout::FlowLayout(QWidget *parent, int spacing)
    : QLayout(parent)
{
    setContentsMargins(0, 0, 0, 0);
    setSpacing(spacing);
}

void FlowLayout::insertWidget(int index, QWidget *widget)
{
    addChildWidget(widget);
    m_items.emplace(m_items.begin() + index, new QWidgetItem(widget));
    invalidate();
}

void FlowLayout::addItem(QLayoutItem *item)
{
    m_items.emplace_back(item);
}

QLayoutItem *FlowLayout::itemAt(int index) const
{
    return index >= 0 && index < count() ? m_items[static_cast<std::size_t>(index)].get() : nullptr;
}

QLayoutItem *FlowLayout::takeAt(int index)
{
    if (itemAt(index) == nullptr)
        return nullptr;
    const auto place = m_items.begin() + index;
    QLayoutItem *item = place->release();
    m_items.erase(place);
    return item;
}

std::vector<QLayoutItem *> FlowLayout::shownItems() const
{
    std::vector<QLayoutItem *> shown;
    for (const auto &item : m_items) {
        if (!item->isEmpty())
            shown.push_back(item.get());
    }
    return shown;
}

QList<QSize> FlowLayout::shownSizes() const
{
    QList<QSize> sizes;
    for (const QLayoutItem *item : shownItems())
        sizes.append(item->sizeHint());
    return sizes;
}

int FlowLayout::heightForWidth(int width) const
{
    return arrangeInRows(shownSizes(), width, spacing()).total.height();
}

QSize FlowLayout::sizeHint() const
{
    return arrangeInRows(shownSizes(), kUnproposedFlowWidth, spacing()).total;
}

QSize FlowLayout::minimumSize() const
{
    QSize minimum;
    for (const QLayoutItem *item : shownItems())
        minimum = minimum.expandedTo(item->minimumSize());
    return minimum;
}

void FlowLayout::setGeometry(const QRect &bounds)
{
    QLayout::setGeometry(bounds);
    const auto items = shownItems();
    const QList<QRect> frames = arrangeInRows(shownSizes(), bounds.width(), spacing()).frames;
    const Qt::LayoutDirection direction = parentWidget()->layoutDirection();
    for (qsizetype i = 0; i < frames.size(); ++i) {
        const QRect frame = frames[i].translated(bounds.topLeft());
        items[static_cast<std::size_t>(i)]->setGeometry(QStyle::visualRect(direction, bounds, frame));
    }
}
