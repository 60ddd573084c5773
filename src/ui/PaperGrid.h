#pragma once

#include "ui/CardPainter.h"
#include "ui/CardText.h"
#include "ui/GridGeometry.h"
#include "ui/GridMotion.h"
#include "ui/PaperGridItem.h"
#include "ui/PaperListModel.h"
#include "ui/SmoothScroll.h"

#include <QAbstractItemView>
#include <QCache>
#include <QPointer>

class CoverCache;
class LibraryViewModel;

/// A scrolled grid of paper cards. Works out places instead of keeping them and paints what is in sight, so
/// that 100,000 cards cost what a screenful costs.
///
/// One card is selected at most. The selection is the id of a paper: it stays through new lists, also while
/// the paper is not among them. Main thread.
class PaperGrid : public QAbstractItemView
{
    Q_OBJECT

public:
    /// The view model and the covers must outlive the grid.
    PaperGrid(LibraryViewModel &vm, CoverCache &covers, CardKind kind, QWidget *parent = nullptr);
    ~PaperGrid() override;

    PaperListModel &papers() { return m_papers; }
    /// Words to tell apart in passages, as the person typed them.
    void setQuery(const QString &query);
    /// Selects without announcing it; an empty id selects nothing.
    void selectPaper(const QString &paperId);
    const QString &selectedPaperId() const { return m_selectedId; }
    /// Brings the paper to the middle of the view; false when it is not in the list.
    bool scrollToPaper(const QString &paperId);
    /// Whether cards move to their places when the list changes, unless the desktop asks for no motion.
    void setAnimatesChanges(bool animates) { m_animatesChanges = animates; }

    /// Asks the disk again which covers and files are there.
    void recheckFiles();

    PaperGridItem item(int row);
    GridGeometry geometryOfCards() const;
    bool isFileMissing(int row);
    CardPainter &cardPainter(double scale);

    QRect visualRect(const QModelIndex &index) const override;
    void scrollTo(const QModelIndex &index, ScrollHint hint = EnsureVisible) override;
    QModelIndex indexAt(const QPoint &point) const override;

Q_SIGNALS:
    /// The person selected a card, or with row -1 none.
    void selected(int row);
    /// The person opened a card, by double click or Return.
    void opened(int row);
    // Wishes about the selected card, by key.
    void detailsToggleRequested(); ///< also without one
    void editRequested();
    void tagRequested();

protected:
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    int horizontalOffset() const override { return 0; }
    int verticalOffset() const override;
    bool isIndexHidden(const QModelIndex &) const override { return false; }
    void setSelection(const QRect &rect, QItemSelectionModel::SelectionFlags command) override;
    QRegion visualRegionForSelection(const QItemSelection &selection) const override;
    void updateGeometries() override;
    void dataChanged(const QModelIndex &first, const QModelIndex &last, const QList<int> &roles) override;
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;
    void selectionChanged(const QItemSelection &selected, const QItemSelection &deselected) override;
    void scrollContentsBy(int dx, int dy) override;
    void startDrag(Qt::DropActions actions) override;

    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;
    bool viewportEvent(QEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    // PaperGrid.cpp: places and lists.
    GridGeometry::Range visibleCards(const QRect &area) const;
    QRect cardInViewport(int row) const;
    void prepareForNewList();
    void takeNewList();
    void restoreSelection();

    // PaperGridPainting.cpp.
    void updateCard(int row);
    void updateCardsShowing(const QString &path);
    void paintCard(QPainter &painter, int row, const CardText *text);
    const CardText &textOf(int row);
    void forgetLooks();

    // PaperGridInput.cpp: keys, mouse and menus.
    void pressKey(const QKeyEvent &event, int row);
    void setHovered(const QModelIndex &index);
    bool showToolTip(const QPoint &globalPosition, const QModelIndex &index);
    void selectRow(int row);
    void confirmRemoval(const PaperGridItem &card);
    bool isConfirming(const QString &paperId) const;

    LibraryViewModel &m_vm;
    CoverCache &m_covers;
    PaperListModel m_papers;
    CardKind m_kind;
    CardStyle m_style;
    std::optional<CardPainter> m_painter;
    double m_painterScale = 0;
    QCache<int, CardText> m_texts; ///< by row
    QString m_query;
    QString m_selectedId;
    bool m_isRestoring = false; ///< a change of the selection is none of the person's
    bool m_animatesChanges = false;
    bool m_isScrolling = false; ///< since the last frame
    int m_hovered = -1;
    GridMotion m_motion;
    QHash<QString, QPointF> m_placesBefore; ///< of the cards in sight before a new list
    int m_rowBefore = -1;                   ///< where the keyboard stood then
    SmoothScroll m_scroll;
    QPointer<QMessageBox> m_alert; ///< asks about the paper of the next id
    QString m_alertPaperId;
};
