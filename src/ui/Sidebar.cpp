#include "ui/Sidebar.h"

#include "app/LibraryViewModel.h"
#include "ui/SidebarDelegate.h"
#include "ui/SidebarModel.h"
#include "ui/Symbols.h"
#include "ui/TrashTarget.h"

#include <QHBoxLayout>
#include <QMenu>
#include <QMouseEvent>
#include <QToolButton>
#include <QTreeView>
#include <QVBoxLayout>

namespace
{
class SidebarTree : public QTreeView
{
public:
    using QTreeView::QTreeView;

protected:
    // A look at a row's menu must not load the row's papers.
    void mousePressEvent(QMouseEvent *event) override
    {
        if (event->button() != Qt::RightButton)
            QTreeView::mousePressEvent(event);
    }
};
} // namespace

Sidebar::Sidebar(LibraryViewModel &vm, QWidget *parent)
    : QWidget(parent)
    , m_vm(vm)
    , m_model(new SidebarModel(vm, this))
    , m_view(new SidebarTree(this))
    , m_trash(new TrashTarget(vm, this))
{
    setObjectName(QStringLiteral("sidebar"));
    // Before the view hears of the same changes.
    connect(m_model, &QAbstractItemModel::rowsAboutToBeRemoved, this, [this] { m_rowsAreChanging = true; });
    setUpView();
    connect(m_model, &QAbstractItemModel::rowsRemoved, this, [this] { showSelection(); });
    connect(m_model, &QAbstractItemModel::rowsInserted, this, [this] {
        m_view->expandAll();
        showSelection();
    });
    addNewTagButton();
    m_trash->hide();

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_view, 1);
    layout->addWidget(m_trash);

    m_observers.push_back(m_vm.currentSidebarItem.addNotifier([this] { showSelection(); }));
    showSelection();
}

void Sidebar::setUpView()
{
    m_view->setObjectName(QStringLiteral("sidebarView"));
    m_view->setAccessibleName(QStringLiteral("Library and tags"));
    m_view->setModel(m_model);
    m_view->setItemDelegate(new SidebarDelegate(m_view));
    m_view->setHeaderHidden(true);
    m_view->setRootIsDecorated(false);
    m_view->setIndentation(0);
    m_view->setItemsExpandable(false);
    m_view->expandAll();
    m_view->setUniformRowHeights(true);
    m_view->setFrameShape(QFrame::NoFrame);
    m_view->viewport()->setBackgroundRole(QPalette::Window);
    m_view->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_view->setDragDropMode(QAbstractItemView::DropOnly);
    m_view->setDropIndicatorShown(true);
    m_view->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(m_view, &QWidget::customContextMenuRequested, this, &Sidebar::showMenu);
    connect(m_view->selectionModel(), &QItemSelectionModel::currentChanged, this, &Sidebar::followSelection);
}

void Sidebar::addNewTagButton()
{
    auto *place = new QWidget;
    auto *button = new QToolButton(place);
    button->setObjectName(QStringLiteral("newTagButton"));
    button->setIcon(symbolIcon(Symbol::NewTag));
    button->setText(QStringLiteral("New Tag"));
    button->setToolTip(button->text());
    button->setAccessibleName(button->text());
    button->setAutoRaise(true);
    connect(button, &QToolButton::clicked, this, &Sidebar::newTagRequested);
    auto *layout = new QHBoxLayout(place);
    layout->setContentsMargins(0, 0, 6, 0);
    layout->addStretch();
    layout->addWidget(button);
    m_view->setIndexWidget(m_model->section(SidebarModel::SmartTags), place);
}

void Sidebar::setCardDragged(bool isDragged)
{
    m_trash->setVisible(isDragged);
    if (!isDragged)
        m_vm.trashTargeted = false;
}

void Sidebar::followSelection()
{
    if (m_rowsAreChanging)
        return;
    if (const std::optional<SidebarItem> item = m_model->item(m_view->currentIndex()))
        m_vm.currentSidebarItem = *item;
}

void Sidebar::showSelection()
{
    m_rowsAreChanging = false;
    const QModelIndex index = m_model->indexOf(m_vm.currentSidebarItem);
    if (index == m_view->currentIndex())
        return;
    m_view->setCurrentIndex(index);
    if (!index.isValid())
        m_view->clearSelection();
}

void Sidebar::showMenu(QPoint position)
{
    const QModelIndex index = m_view->indexAt(position);
    const std::optional<SidebarItem> item = m_model->item(index);
    const bool isOfTags = item ? item->isTag() : index != m_model->section(SidebarModel::Library);
    if (!isOfTags)
        return;
    auto *menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("sidebarMenu"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    if (item) {
        const QString tag = item->tag;
        menu->addAction(symbolIcon(Symbol::Rename), QStringLiteral("Rename Tag"), this,
                        [this, tag] { Q_EMIT renameTagRequested(tag); });
        menu->addAction(symbolIcon(Symbol::Delete), QStringLiteral("Delete Tag"), this,
                        [this, tag] { Q_EMIT deleteTagRequested(tag); });
    } else {
        menu->addAction(symbolIcon(Symbol::NewTag), QStringLiteral("New Tag"), this,
                        &Sidebar::newTagRequested);
    }
    menu->popup(m_view->viewport()->mapToGlobal(position));
}
