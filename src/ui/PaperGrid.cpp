#include "ui/PaperGrid.h"

#include "ui/CoverCache.h"
#include "ui/PaperGridAccessible.h"
#include "ui/ReducedMotion.h"

#include <QMessageBox>
#include <QScrollBar>

namespace
{
/// Cards whose laid-out texts are kept: two 4K screens of them.
constexpr int kMostTexts = 320;
/// One notch of the wheel, and one press of a scroll bar's arrow.
constexpr int kScrollStep = 96;
} // namespace

PaperGrid::PaperGrid(LibraryViewModel &vm, CoverCache &covers, CardKind kind, QWidget *parent)
    : QAbstractItemView(parent)
    , m_vm(vm)
    , m_covers(covers)
    , m_kind(kind)
    , m_style(font(), kind)
    , m_texts(kMostTexts)
    , m_motion(this)
    , m_scroll(verticalScrollBar())
{
    installPaperGridAccessibility();
    setFrameShape(NoFrame);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setDragEnabled(true);
    setDragDropMode(DragOnly);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollMode(ScrollPerPixel);
    viewport()->setAttribute(Qt::WA_Hover);
    connect(&m_papers, &QAbstractItemModel::modelAboutToBeReset, this, &PaperGrid::prepareForNewList);
    setModel(&m_papers);
    // After the selection model, which empties itself on the same signal.
    connect(&m_papers, &QAbstractItemModel::modelReset, this, &PaperGrid::takeNewList);
    connect(&covers, &CoverCache::arrived, this, &PaperGrid::updateCardsShowing);
    connect(&m_motion, &QVariantAnimation::valueChanged, viewport(), qOverload<>(&QWidget::update));
    connect(&m_motion, &QAbstractAnimation::finished, viewport(), qOverload<>(&QWidget::update));
}

PaperGrid::~PaperGrid()
{
    blockSignals(true); // who listens may be half gone
    // The model goes before the base class, which would look at a grid half gone when it hears of that.
    setModel(nullptr);
}

GridGeometry PaperGrid::geometryOfCards() const
{
    return {.width = viewport()->width(), .count = m_papers.rowCount(), .cardHeight = m_style.height()};
}

void PaperGrid::setQuery(const QString &query)
{
    if (std::exchange(m_query, query) == query)
        return;
    m_texts.clear();
    viewport()->update();
}

bool PaperGrid::isFileMissing(int row)
{
    return m_covers.isFileMissing(m_papers.paper(row).filepath);
}

void PaperGrid::recheckFiles()
{
    m_covers.recheck();
    viewport()->update();
}

CardPainter &PaperGrid::cardPainter(double scale)
{
    if (!m_painter || m_painterScale != scale)
        m_painter.emplace(m_style, palette(), scale);
    m_painterScale = scale;
    return *m_painter;
}

// Places.

int PaperGrid::verticalOffset() const
{
    return verticalScrollBar()->value();
}

QRect PaperGrid::cardInViewport(int row) const
{
    return geometryOfCards().cardRect(row).translated(0, -verticalOffset());
}

QRect PaperGrid::visualRect(const QModelIndex &index) const
{
    return index.isValid() ? cardInViewport(index.row()) : QRect();
}

QModelIndex PaperGrid::indexAt(const QPoint &point) const
{
    const auto card = geometryOfCards().cardAt(point + QPoint(0, verticalOffset()));
    return card ? m_papers.index(*card) : QModelIndex();
}

GridGeometry::Range PaperGrid::visibleCards(const QRect &area) const
{
    return geometryOfCards().cardsBetween(area.top() + verticalOffset() - CardPainter::kRingReach,
                                          area.bottom() + verticalOffset() + CardPainter::kRingReach);
}

QRegion PaperGrid::visualRegionForSelection(const QItemSelection &selection) const
{
    QRegion region;
    const auto indexes = selection.indexes();
    for (const QModelIndex &index : indexes)
        region += visualRect(index);
    return region;
}

void PaperGrid::updateGeometries()
{
    QAbstractItemView::updateGeometries();
    QScrollBar *bar = verticalScrollBar();
    bar->setRange(0, std::max(0, geometryOfCards().height() - viewport()->height()));
    bar->setPageStep(viewport()->height());
    bar->setSingleStep(kScrollStep);
}

void PaperGrid::resizeEvent(QResizeEvent *event)
{
    // Other columns put every card elsewhere: what was in sight stays in sight.
    GridGeometry before = geometryOfCards();
    before.width = event->oldSize().width();
    const int offset = verticalOffset();
    const auto seen = before.cardsBetween(offset, offset + std::max(0, event->oldSize().height()));
    const int current = currentIndex().row();
    const int anchor = current >= seen.first && current <= seen.last ? current : seen.first;
    const int distance = anchor < before.count ? before.cardRect(anchor).top() - offset : 0;
    QAbstractItemView::resizeEvent(event);
    updateGeometries();
    if (offset > 0 && anchor < before.count && before.columns() != geometryOfCards().columns())
        verticalScrollBar()->setValue(geometryOfCards().cardRect(anchor).top() - distance);
}

void PaperGrid::scrollTo(const QModelIndex &index, ScrollHint hint)
{
    if (!index.isValid())
        return;
    m_scroll.stop();
    updateGeometries();
    const QRect card = geometryOfCards().cardRect(index.row());
    const int height = viewport()->height();
    const int highest = card.bottom() + GridGeometry::kPadding - height;
    const int lowest = card.top() - GridGeometry::kPadding;
    int offset = verticalOffset();
    if (hint == PositionAtCenter)
        offset = card.center().y() - height / 2;
    else if (hint == PositionAtTop || offset > lowest || highest > lowest)
        offset = lowest;
    else if (hint == PositionAtBottom || offset < highest)
        offset = highest;
    verticalScrollBar()->setValue(offset);
}

bool PaperGrid::scrollToPaper(const QString &paperId)
{
    const int row = m_papers.rowOf(paperId);
    if (row >= 0)
        scrollTo(m_papers.index(row), PositionAtCenter);
    return row >= 0;
}

void PaperGrid::scrollContentsBy(int dx, int dy)
{
    m_isScrolling = true;
    if (m_motion.isMoving())
        viewport()->update();
    else
        viewport()->scroll(dx, dy);
    if (viewport()->underMouse())
        setHovered(indexAt(viewport()->mapFromGlobal(QCursor::pos())));
}

// New lists.

void PaperGrid::prepareForNewList()
{
    m_isRestoring = true;
    m_rowBefore = currentIndex().row();
    m_placesBefore.clear();
    if (!m_animatesChanges || prefersReducedMotion())
        return;
    const auto cards = visibleCards(viewport()->rect());
    for (int row = cards.first; row <= cards.last; ++row) {
        const QString &id = m_papers.paper(row).id;
        m_placesBefore.insert(id, m_motion.pose(id, cardInViewport(row).topLeft()).topLeft);
    }
}

void PaperGrid::takeNewList()
{
    m_texts.clear();
    m_hovered = -1;
    updateGeometries();
    restoreSelection();
    // A card that is gone leaves the keyboard at its place.
    const int row = std::min(m_rowBefore, m_papers.rowCount() - 1);
    if (!currentIndex().isValid() && row >= 0)
        selectionModel()->setCurrentIndex(m_papers.index(row), QItemSelectionModel::NoUpdate);
    m_isRestoring = false;
    m_motion.startFrom(std::exchange(m_placesBefore, {}));
    viewport()->update();
}

void PaperGrid::restoreSelection()
{
    const int row = m_selectedId.isEmpty() ? -1 : m_papers.rowOf(m_selectedId);
    if (row >= 0)
        selectionModel()->setCurrentIndex(m_papers.index(row), QItemSelectionModel::ClearAndSelect);
    else
        selectionModel()->clearSelection();
}

void PaperGrid::selectPaper(const QString &paperId)
{
    if (std::exchange(m_selectedId, paperId) == paperId)
        return;
    m_isRestoring = true;
    restoreSelection();
    m_isRestoring = false;
}

void PaperGrid::dataChanged(const QModelIndex &first, const QModelIndex &last, const QList<int> &)
{
    const auto cards = visibleCards(viewport()->rect());
    if (last.row() - first.row() >= kMostTexts)
        m_texts.clear();
    else
        for (int row = first.row(); row <= last.row(); ++row)
            m_texts.remove(row);
    if (first.row() <= cards.last && last.row() >= cards.first)
        viewport()->update();
}
