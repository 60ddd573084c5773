#pragma once

#include <QList>
#include <QRect>
#include <QSize>

/// Where items lie in rows that wrap. Positions count from the top left corner.
struct FlowArrangement {
    QList<QRect> frames;
    QSize total; ///< as wide as was offered, whatever the rows use
};

/// The width of a flow to which none is proposed. Chosen: a narrow detail panel.
inline constexpr int kUnproposedFlowWidth = 240;

/// Puts items of the given sizes into rows of at most `maximumWidth`, `spacing` apart in both directions. The
/// first item of a row never wraps, even when it is wider: it sticks out rather than leaving an empty row.
FlowArrangement arrangeInRows(const QList<QSize> &sizes, int maximumWidth, int spacing);
