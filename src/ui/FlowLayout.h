#pragma once

#include <QLayout>
#include <memory>
#include <vector>

/// Lays widgets out in rows that wrap, each at the size that it wants (see `arrangeInRows`); mirrored where
/// people read from right to left. Hidden widgets take no place.
class FlowLayout : public QLayout
{
public:
    /// `spacing` lies between items, in both directions.
    FlowLayout(QWidget *parent, int spacing);

    /// Puts `widget` at place `index`; the caller's parent widget owns it.
    void insertWidget(int index, QWidget *widget);

    void addItem(QLayoutItem *item) override;
    int count() const override { return static_cast<int>(m_items.size()); }
    QLayoutItem *itemAt(int index) const override;
    QLayoutItem *takeAt(int index) override;

    Qt::Orientations expandingDirections() const override { return {}; }
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    /// For the width of a flow to which none is proposed.
    QSize sizeHint() const override;
    QSize minimumSize() const override;
    void setGeometry(const QRect &bounds) override;

private:
    std::vector<QLayoutItem *> shownItems() const;
    QList<QSize> shownSizes() const;

    std::vector<std::unique_ptr<QLayoutItem>> m_items;
};
