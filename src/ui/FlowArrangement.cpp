#include "ui/FlowArrangement.h"

FlowArrangement arrangeInRows(const QList<QSize> &sizes, int maximumWidth, int spacing)
{
    FlowArrangement arrangement;
    QPoint next;
    int rowHeight = 0;
    for (const QSize &size : sizes) {
        if (next.x() > 0 && next.x() + size.width() > maximumWidth) {
            next = {0, next.y() + rowHeight + spacing};
            rowHeight = 0;
        }
        arrangement.frames.append({next, size});
        next.rx() += size.width() + spacing;
        rowHeight = qMax(rowHeight, size.height());
    }
    arrangement.total = {maximumWidth, next.y() + rowHeight};
    return arrangement;
}
