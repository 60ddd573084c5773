#include "reader/PassageList.h"

#include "reader/PassageDelegate.h"

#include <QKeyEvent>

PassageList::PassageList(QWidget *parent)
    : QListView(parent)
{
    setModel(&m_model);
    setItemDelegate(new PassageDelegate(this));
    setFrameShape(QFrame::NoFrame);
    setUniformItemSizes(false);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollMode(ScrollPerPixel);
    connect(this, &QListView::clicked, this,
            [this](const QModelIndex &index) { Q_EMIT opened(index.row()); });
}

void PassageList::setCurrent(int index)
{
    m_model.setCurrent(index);
    if (index < 0)
        return;
    const QModelIndex row = m_model.index(index);
    setCurrentIndex(row);
    scrollTo(row);
}

void PassageList::keyPressEvent(QKeyEvent *event)
{
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn && currentIndex().isValid())
        Q_EMIT opened(currentIndex().row());
    else if (event->key() == Qt::Key_Delete && currentIndex().isValid())
        Q_EMIT deleteRequested(currentIndex().row());
    else
        QListView::keyPressEvent(event);
}

void PassageList::resizeEvent(QResizeEvent *event)
{
    QListView::resizeEvent(event);
    scheduleDelayedItemsLayout(); // the rows' heights follow from the width
}
