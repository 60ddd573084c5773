#include "ui/PaperGridAccessible.h"

#include "ui/CardWords.h"
#include "ui/PaperGrid.h"

#include <QAccessibleWidget>
#include <QPointer>

namespace
{
class CardInterface : public QAccessibleInterface, public QAccessibleActionInterface
{
public:
    CardInterface(PaperGrid *grid, int row)
        : m_grid(grid)
        , m_row(row)
    {
    }

    bool isValid() const override { return m_grid && m_row < m_grid->papers().rowCount(); }
    QObject *object() const override { return nullptr; }
    QWindow *window() const override { return m_grid->window()->windowHandle(); }
    QAccessibleInterface *parent() const override { return QAccessible::queryAccessibleInterface(m_grid); }
    QAccessibleInterface *child(int) const override { return nullptr; }
    QAccessibleInterface *childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface *) const override { return -1; }
    QAccessible::Role role() const override { return QAccessible::ListItem; }
    int row() const { return m_row; }

    QRect rect() const override
    {
        const QRect card = m_grid->visualRect(m_grid->papers().index(m_row));
        return card.translated(m_grid->viewport()->mapToGlobal(QPoint(0, 0)));
    }

    QString text(QAccessible::Text kind) const override
    {
        if (kind != QAccessible::Name || !isValid())
            return {};
        const QString spoken = m_grid->papers().index(m_row).data(Qt::AccessibleTextRole).toString();
        return m_grid->isFileMissing(m_row) ? QString(spoken + u", " + spokenFileMissing()) : spoken;
    }
    void setText(QAccessible::Text, const QString &) override {}

    QAccessible::State state() const override
    {
        QAccessible::State state;
        if (!isValid()) {
            state.invalid = true;
            return state;
        }
        const QModelIndex index = m_grid->papers().index(m_row);
        state.selectable = true;
        state.focusable = true;
        state.selected = m_grid->selectionModel()->isSelected(index);
        state.focused = m_grid->hasFocus() && m_grid->currentIndex() == index;
        state.offscreen = !m_grid->viewport()->rect().intersects(m_grid->visualRect(index));
        state.invisible = !m_grid->isVisible();
        return state;
    }

    void *interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface *>(this)
                                                    : nullptr;
    }
    QStringList actionNames() const override { return {pressAction(), setFocusAction()}; }
    QStringList keyBindingsForAction(const QString &) const override { return {}; }
    /// Pressing a card opens it, as Return does.
    void doAction(const QString &name) override
    {
        if (!isValid())
            return;
        const PaperGridItem card = m_grid->item(m_row);
        card.onSelect();
        if (name == pressAction())
            card.onDoubleClick();
        else
            m_grid->setFocus();
    }

private:
    QPointer<PaperGrid> m_grid;
    int m_row;
};

/// The list. Its children are made as they are asked for, and live as long as their rows mean the same.
class GridInterface : public QAccessibleWidget
{
public:
    explicit GridInterface(PaperGrid *grid)
        : QAccessibleWidget(grid, QAccessible::List)
        , m_grid(grid)
        , m_onReset(
              QObject::connect(&grid->papers(), &QAbstractItemModel::modelReset, grid, [this] { forget(); }))
    {
    }
    ~GridInterface() override
    {
        QObject::disconnect(m_onReset);
        forget();
    }
    Q_DISABLE_COPY_MOVE(GridInterface)

    int childCount() const override { return m_grid->papers().rowCount(); }

    QAccessibleInterface *child(int row) const override
    {
        if (row < 0 || row >= childCount())
            return nullptr;
        QAccessible::Id &id = m_cards[row];
        if (id == 0)
            id = QAccessible::registerAccessibleInterface(new CardInterface(m_grid, row));
        return QAccessible::accessibleInterface(id);
    }

    int indexOfChild(const QAccessibleInterface *child) const override
    {
        const auto *card = dynamic_cast<const CardInterface *>(child);
        return card && card->parent() == this ? card->row() : -1;
    }

    QAccessibleInterface *childAt(int x, int y) const override
    {
        const QModelIndex index = m_grid->indexAt(m_grid->viewport()->mapFromGlobal(QPoint(x, y)));
        return index.isValid() ? child(index.row()) : nullptr;
    }

    QAccessibleInterface *focusChild() const override
    {
        return m_grid->hasFocus() ? child(m_grid->currentIndex().row()) : nullptr;
    }

private:
    void forget()
    {
        for (const QAccessible::Id id : std::as_const(m_cards))
            QAccessible::deleteAccessibleInterface(id);
        m_cards.clear();
    }

    PaperGrid *m_grid;
    mutable QHash<int, QAccessible::Id> m_cards;
    QMetaObject::Connection m_onReset;
};

QAccessibleInterface *makeInterface(const QString &className, QObject *object)
{
    auto *grid = className == QLatin1String("PaperGrid") ? qobject_cast<PaperGrid *>(object) : nullptr;
    return grid ? new GridInterface(grid) : nullptr;
}
} // namespace

void installPaperGridAccessibility()
{
    QAccessible::installFactory(makeInterface); // knows a factory that it has
}
