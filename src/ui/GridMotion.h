#pragma once

#include <QHash>
#include <QPointF>
#include <QString>
#include <QVariantAnimation>

/// Carries the cards of a grid from where they stood to where a changed list puts them, on the spring; cards
/// that were not there before fade in. Main thread.
class GridMotion : public QVariantAnimation
{
public:
    explicit GridMotion(QObject *parent);

    /// Where a card is drawn right now.
    struct Pose {
        QPointF topLeft;
        double opacity = 1;
    };

    /// Begins a motion from these places, by paper id, in the viewport's pixels. Without any there is none.
    void startFrom(const QHash<QString, QPointF> &places);
    /// The pose of a card that belongs at `target`; that place itself when nothing moves.
    Pose pose(const QString &paperId, QPointF target) const;
    bool isMoving() const { return state() == Running; }

private:
    QHash<QString, QPointF> m_from;
};
