#include "app/LibraryViewModel.h"
#include "ui/CoverCache.h"
#include "ui/PaperGrid.h"

#include <QAccessible>
#include <QContextMenuEvent>
#include <QDrag>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QScrollBar>
#include <QToolTip>
#include <QWheelEvent>

namespace
{
void announce(PaperGrid *grid, QAccessible::Event what, int row)
{
    QAccessibleEvent event(grid, what);
    event.setChild(row);
    QAccessible::updateAccessibility(&event);
}
} // namespace

PaperGridItem PaperGrid::item(int row)
{
    const PaperCard card = m_papers.card(row);
    return {.vm = m_vm,
            .paper = card.paper,
            .passage = card.passage,
            .isSelected = card.paper.id == m_selectedId,
            .onSelect = [this, row] { selectRow(row); },
            .onDoubleClick = [this, row] { Q_EMIT opened(row); },
            .showingDeleteConfirmation = isConfirming(card.paper.id),
            .image = std::nullopt};
}

bool PaperGrid::isConfirming(const QString &paperId) const
{
    return m_alert && m_alertPaperId == paperId;
}

// Selecting.

void PaperGrid::selectRow(int row)
{
    selectionModel()->setCurrentIndex(m_papers.index(row), QItemSelectionModel::ClearAndSelect);
}

void PaperGrid::setSelection(const QRect &rect, QItemSelectionModel::SelectionFlags command)
{
    selectionModel()->select(indexAt(rect.topLeft()), command);
}

void PaperGrid::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    QAbstractItemView::currentChanged(current, previous);
    updateCard(previous.row());
    updateCard(current.row());
    if (current.isValid() && hasFocus())
        announce(this, QAccessible::Focus, current.row());
}

void PaperGrid::selectionChanged(const QItemSelection &now, const QItemSelection &before)
{
    QAbstractItemView::selectionChanged(now, before);
    for (const QModelIndex &index : before.indexes())
        updateCard(index.row());
    const QModelIndexList indexes = selectionModel()->selectedIndexes();
    const int row = indexes.isEmpty() ? -1 : indexes.first().row();
    updateCard(row);
    if (m_isRestoring)
        return;
    m_selectedId = row < 0 ? QString() : m_papers.paper(row).id;
    if (row >= 0)
        announce(this, QAccessible::Selection, row);
    Q_EMIT selected(row);
}

// Keys.

QModelIndex PaperGrid::moveCursor(CursorAction action, Qt::KeyboardModifiers)
{
    const GridGeometry grid = geometryOfCards();
    const int last = grid.count - 1;
    const int current = currentIndex().row();
    if (last < 0)
        return {};
    if (current < 0)
        return m_papers.index(action == MoveEnd ? last : 0);
    const int columns = grid.columns();
    const int linesOfPage = std::max(1, viewport()->height() / grid.lineHeight());
    const auto moved = [&](int lines) {
        const int line = std::clamp(current / columns + lines, 0, last / columns);
        return std::min(line * columns + current % columns, last);
    };
    switch (action) {
    case MoveUp:
        return m_papers.index(moved(-1));
    case MoveDown:
        return m_papers.index(moved(1));
    case MovePageUp:
        return m_papers.index(moved(-linesOfPage));
    case MovePageDown:
        return m_papers.index(moved(linesOfPage));
    case MoveHome:
        return m_papers.index(0);
    case MoveEnd:
        return m_papers.index(last);
    case MoveLeft:
    case MovePrevious:
        return m_papers.index(std::max(0, current - 1));
    case MoveRight:
    case MoveNext:
        return m_papers.index(std::min(last, current + 1));
    }
    return {};
}

void PaperGrid::keyPressEvent(QKeyEvent *event)
{
    const int row = currentIndex().row();
    const bool isTagKey = event->key() == Qt::Key_T && event->modifiers() == Qt::ControlModifier;
    const bool isPlain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    const bool isOwn = isPlain && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter ||
                                   event->key() == Qt::Key_Space || event->key() == Qt::Key_Delete ||
                                   event->key() == Qt::Key_F2);
    if (!isTagKey && !isOwn)
        QAbstractItemView::keyPressEvent(event);
    else if (event->key() == Qt::Key_Space)
        Q_EMIT detailsToggleRequested();
    else if (row >= 0)
        pressKey(*event, row);
    else
        event->ignore();
}

void PaperGrid::pressKey(const QKeyEvent &event, int row)
{
    // What follows is about the selected paper; the keyboard may stand on a card that is not selected.
    const PaperGridItem card = item(row);
    if (!card.isSelected)
        card.onSelect();
    switch (event.key()) {
    case Qt::Key_Delete:
        return m_vm.requestDelete(card.paper);
    case Qt::Key_F2:
        Q_EMIT editRequested();
        return;
    case Qt::Key_T:
        Q_EMIT tagRequested();
        return;
    default:
        card.onDoubleClick();
    }
}

void PaperGrid::focusInEvent(QFocusEvent *event)
{
    QAbstractItemView::focusInEvent(event);
    updateCard(currentIndex().row());
    if (currentIndex().isValid())
        announce(this, QAccessible::Focus, currentIndex().row());
}

void PaperGrid::focusOutEvent(QFocusEvent *event)
{
    QAbstractItemView::focusOutEvent(event);
    updateCard(currentIndex().row());
}

// Mouse.

void PaperGrid::mousePressEvent(QMouseEvent *event)
{
    QAbstractItemView::mousePressEvent(event);
    if (event->button() == Qt::LeftButton && !indexAt(event->pos()).isValid())
        selectionModel()->clear();
}

void PaperGrid::mouseDoubleClickEvent(QMouseEvent *event)
{
    const QModelIndex index = indexAt(event->pos());
    if (event->button() == Qt::LeftButton && index.isValid())
        item(index.row()).onDoubleClick();
}

void PaperGrid::wheelEvent(QWheelEvent *event)
{
    m_scroll.scroll(*event, verticalScrollBar()->singleStep());
    event->accept();
}

bool PaperGrid::viewportEvent(QEvent *event)
{
    switch (event->type()) {
    case QEvent::HoverEnter:
    case QEvent::HoverMove:
        setHovered(indexAt(static_cast<QHoverEvent *>(event)->position().toPoint()));
        break;
    case QEvent::HoverLeave:
        setHovered({});
        break;
    case QEvent::ToolTip: {
        const auto *help = static_cast<QHelpEvent *>(event);
        return showToolTip(help->globalPos(), indexAt(help->pos()));
    }
    default:
        break;
    }
    return QAbstractItemView::viewportEvent(event);
}

void PaperGrid::setHovered(const QModelIndex &index)
{
    const int before = std::exchange(m_hovered, index.row());
    if (before == m_hovered)
        return;
    updateCard(before);
    updateCard(m_hovered);
}

bool PaperGrid::showToolTip(const QPoint &globalPosition, const QModelIndex &index)
{
    if (!index.isValid()) {
        QToolTip::hideText();
        return true;
    }
    const Paper &paper = m_papers.paper(index.row());
    QStringList lines;
    if (textOf(index.row()).isTitleCut())
        lines.append(paper.title);
    if (isFileMissing(index.row()))
        lines.append(u"The PDF is no longer at " + paper.filepath);
    // In a paragraph of rich text a long title wraps, and its own markup stays text.
    const QString text = lines.join(u'\n').toHtmlEscaped().replace(u'\n', QStringLiteral("<br>"));
    QToolTip::showText(globalPosition, text.isEmpty() ? text : QString(u"<p>" + text + u"</p>"), viewport(),
                       visualRect(index));
    return true;
}

void PaperGrid::contextMenuEvent(QContextMenuEvent *event)
{
    const bool isByKey = event->reason() == QContextMenuEvent::Keyboard;
    const QModelIndex index = isByKey ? currentIndex() : indexAt(event->pos());
    if (!index.isValid())
        return;
    const QPoint place = isByKey ? viewport()->mapToGlobal(visualRect(index).center()) : event->globalPos();
    const PaperGridItem card = item(index.row());
    if (!card.isSelected)
        card.onSelect();
    card.makeContextMenu(window(), [this, card] { confirmRemoval(card); })->popup(place);
}

void PaperGrid::confirmRemoval(const PaperGridItem &card)
{
    if (isConfirming(card.paper.id))
        return;
    m_alert = card.confirmRemoval(window());
    m_alertPaperId = card.paper.id;
}

void PaperGrid::startDrag(Qt::DropActions actions)
{
    const QModelIndexList indexes = selectedIndexes();
    if (indexes.isEmpty())
        return;
    auto *drag = new QDrag(this);
    drag->setMimeData(m_papers.mimeData(indexes));
    const QSize box = cardPainter(devicePixelRatioF()).coverBox();
    QPixmap cover = m_covers.cover(m_papers.paper(indexes.first().row()).coverPath, box);
    if (!cover.isNull()) {
        cover = cover.scaled(box / 2, Qt::KeepAspectRatio, Qt::SmoothTransformation);
        cover.setDevicePixelRatio(devicePixelRatioF());
        drag->setPixmap(cover);
    }
    drag->exec(actions);
}
