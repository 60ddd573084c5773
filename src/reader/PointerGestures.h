#pragma once

#include "base/Clock.h"
#include "pdf/PDFLink.h"
#include "reader/TextSelector.h"

#include <QPointF>
#include <memory>
#include <optional>

class PDFKitView;
class QMouseEvent;

/// What the mouse does in a `PDFKitView`: selects, follows links, drags the pages with the middle button,
/// goes back and forward with its outer ones. Positions are in the viewport.
class PointerGestures
{
public:
    explicit PointerGestures(PDFKitView &view);

    // Each answers whether the event meant something here.
    bool press(const QMouseEvent &event);
    bool doublePress(const QMouseEvent &event);
    bool move(const QMouseEvent &event);
    bool release(const QMouseEvent &event);

    /// The cursor for what lies under the pointer now, after the pages have moved.
    void updateCursor();

private:
    enum class Drag { None, Pressed, Select, Pan };

    TextSelector::Place placeAt(QPointF where) const;
    std::optional<PDFLink> linkAt(QPointF where) const;
    bool isOverText(QPointF where) const;
    bool isTriplePress(const QMouseEvent &event) const;
    void pressLeft(const QMouseEvent &event);
    void pan(QPointF to);
    void select(QPointF to);
    /// While the pointer is beyond the edge the pages move under it.
    void scrollAtEdge();

    PDFKitView &m_view;
    Drag m_drag = Drag::None;
    QPointF m_pressedAt;
    QPointF m_last;
    QPointF m_doublePressedAt;
    std::optional<quint64> m_doublePressedTime; ///< milliseconds, as events count them
    std::optional<PDFLink> m_pressedLink;
    std::unique_ptr<PendingCall> m_edgeScroll;
};
