#include "ui/GridGeometry.h"

#include <algorithm>

int GridGeometry::columns() const
{
    return std::max(1, (width - 2 * kPadding + kGap) / (kCardWidth + kGap));
}

int GridGeometry::lines() const
{
    return (count + columns() - 1) / columns();
}

int GridGeometry::height() const
{
    return count == 0 ? 0 : 2 * kPadding + lines() * lineHeight() - kGap;
}

int GridGeometry::left() const
{
    const int used = columns() * (kCardWidth + kGap) - kGap;
    return std::max(0, (width - used) / 2);
}

QRect GridGeometry::cardRect(int card) const
{
    const int column = card % columns();
    const int line = card / columns();
    return {left() + column * (kCardWidth + kGap), kPadding + line * lineHeight(), kCardWidth, cardHeight};
}

std::optional<int> GridGeometry::cardAt(QPoint point) const
{
    if (point.x() < left() || point.y() < kPadding)
        return std::nullopt;
    const int column = (point.x() - left()) / (kCardWidth + kGap);
    const int card = (point.y() - kPadding) / lineHeight() * columns() + column;
    if (column >= columns() || card >= count || !cardRect(card).contains(point))
        return std::nullopt;
    return card;
}

GridGeometry::Range GridGeometry::cardsBetween(int top, int bottom) const
{
    if (count == 0 || bottom < kPadding)
        return {};
    const int firstLine = std::max(0, top - kPadding - cardHeight + lineHeight()) / lineHeight();
    const int lastLine = (bottom - kPadding) / lineHeight();
    return {firstLine * columns(), std::min(count, (lastLine + 1) * columns()) - 1};
}
