#pragma once

#include "reader/Viewpoint.h"

#include <QList>
#include <QWidget>

/// Marks beside the scroll bar where in the document hits are; between them one sees through. A click on one
/// asks to go there.
class HitMarkStrip : public QWidget
{
    Q_OBJECT

public:
    static constexpr int kWidth = 8;

    explicit HitMarkStrip(QWidget *parent = nullptr);

    /// `current` is an index of `pageIndexes`, or -1.
    void setMarks(const QList<qint64> &pageIndexes, int current);
    bool hasMarks() const { return !m_pageIndexes.isEmpty(); }
    void setPageCount(qint64 pageCount);

    /// Where the mark of a page is.
    QRect markOf(qint64 pageIndex) const;

Q_SIGNALS:
    void activated(int index);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    QList<qint64> m_pageIndexes;
    int m_current = -1;
    qint64 m_pageCount = 0;
};
