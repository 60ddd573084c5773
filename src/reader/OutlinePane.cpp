#include "reader/OutlinePane.h"

#include "reader/PDFViewerController.h"

#include <QTreeView>

namespace
{
/// Of an outline, so many items are shown without a click. Chosen: what fits a tall sidebar.
constexpr int kMostExpandedItems = 40;
} // namespace

OutlinePane::OutlinePane(PDFViewerController &controller, PDFView &view, QWidget *parent)
    : OutlinePane(controller, view, new QTreeView, parent)
{
}

OutlinePane::OutlinePane(PDFViewerController &controller, PDFView &view, QTreeView *tree, QWidget *parent)
    : ListOrHint(tree, parent)
    , m_controller(controller)
    , m_view(view)
    , m_tree(tree)
{
    setObjectName(QStringLiteral("outlinePane"));
    m_tree->setObjectName(QStringLiteral("outline"));
    m_tree->setAccessibleName(QStringLiteral("Outline"));
    m_tree->setModel(&m_model);
    m_tree->setHeaderHidden(true);
    m_tree->setFrameShape(QFrame::NoFrame);
    m_tree->setUniformRowHeights(true);
    m_tree->setTextElideMode(Qt::ElideRight);
    m_tree->setExpandsOnDoubleClick(false);
    connect(m_tree, &QTreeView::clicked, this, &OutlinePane::open);
    // Return; a click that activates as well goes to the same place twice, which is one jump.
    connect(m_tree, &QTreeView::activated, this, &OutlinePane::open);
    m_observers.push_back(m_controller.outline.addNotifier([this] { showOutline(); }));
    m_observers.push_back(m_controller.pageCount.addNotifier([this] { explainEmptiness(); }));
    showOutline();
}

void OutlinePane::showOutline()
{
    m_model.setOutline(m_controller.outline);
    explainEmptiness();
    if (m_model.rowCount() == 1)
        m_tree->expand(m_model.index(0, 0));
    else if (m_model.rowCount() < kMostExpandedItems / 4)
        m_tree->expandToDepth(0);
}

void OutlinePane::explainEmptiness()
{
    const bool isEmpty = m_controller.pageCount > 0 && m_model.rowCount() == 0;
    setHint(isEmpty ? QStringLiteral("This document has no outline.") : QString());
}

void OutlinePane::open(const QModelIndex &index)
{
    const std::optional<PDFPosition> destination = m_model.element(index).destination;
    if (destination)
        m_view.goToPosition(*destination);
}
