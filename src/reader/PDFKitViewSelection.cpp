#include "reader/HitMarkStrip.h"
#include "reader/PDFKitView.h"
#include "reader/PointerGestures.h"
#include "reader/SelectionCopier.h"

#include <QAction>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QMenu>

namespace
{
/// Of the selected text, for those who listen to it and for searches. Chosen: a long paragraph.
constexpr qsizetype kMostDescribedCharacters = 500;
} // namespace

void PDFKitView::makeActions()
{
    const auto make = [this](const QString &text, const QString &name, auto slot) {
        QAction *action = new QAction(text, this);
        action->setObjectName(name);
        action->setShortcutContext(Qt::WidgetShortcut);
        connect(action, &QAction::triggered, this, slot);
        addAction(action);
        return action;
    };
    m_copyAction = make(QStringLiteral("Copy"), QStringLiteral("copy"), &PDFKitView::copySelection);
    m_copyAction->setShortcut(QKeySequence::Copy);
    m_bookmarkAction = make(QStringLiteral("Bookmark Selection"), QStringLiteral("bookmarkSelection"),
                            &PDFKitView::bookmarkRequested);
    m_searchAction = make(QStringLiteral("Search in Library"), QStringLiteral("searchInLibrary"), [this] {
        if (const std::optional<PDFSelection> selected = currentSelection())
            Q_EMIT librarySearchRequested(selected->string().left(kMostDescribedCharacters).simplified());
    });
    m_selectAllAction =
        make(QStringLiteral("Select All"), QStringLiteral("selectAll"), &PDFKitView::selectAll);
    m_selectAllAction->setShortcut(QKeySequence::SelectAll);
}

std::optional<PDFSelection> PDFKitView::currentSelection() const
{
    return m_selector.selection();
}

void PDFKitView::setCurrentSelection(const std::optional<PDFSelection> &selection, Animate animate)
{
    m_selector.set(selection.value_or(PDFSelection()));
    m_litSince.reset();
    if (animate == Animate::Yes && m_selector.isGiven() && !prefersStillness()) {
        m_litSince = m_clock.elapsed();
        scheduleFrame();
    }
    selectionMoved();
}

void PDFKitView::selectAll()
{
    m_selector.selectAll(m_viewpoint.layout().pageCount());
    selectionMoved();
}

void PDFKitView::startSelection(const TextSelector::Place &place, PDFTextUnit unit)
{
    m_selector.start(place, unit);
    selectionMoved();
}

void PDFKitView::extendSelection(const TextSelector::Place &place)
{
    m_selector.extend(place);
    selectionMoved();
}

void PDFKitView::offerSelection() const
{
    const std::optional<PDFSelection> selected = currentSelection();
    if (selected && QGuiApplication::clipboard()->supportsSelection())
        QGuiApplication::clipboard()->setText(selected->string(), QClipboard::Selection);
}

void PDFKitView::copySelection()
{
    if (!m_stock.source())
        return;
    const auto copy = [](const QString &text) {
        if (!text.isEmpty())
            QGuiApplication::clipboard()->setText(text);
    };
    if (m_selector.isGiven())
        return copy(m_selector.selection()->string());
    m_copier = std::make_unique<SelectionCopier>(m_selector, *m_stock.source(), m_stock.contents(), copy);
    m_copier->start();
}

void PDFKitView::selectionMoved()
{
    const bool isSelected = currentSelection().has_value();
    for (QAction *action : {m_copyAction, m_bookmarkAction, m_searchAction})
        action->setEnabled(isSelected);
    describe();
    fetch();
    viewport()->update();
    if (selectionChanged)
        selectionChanged();
}

void PDFKitView::describe()
{
    QString description;
    if (const std::optional<qint64> page = currentPageIndex())
        description = QStringLiteral("Page %1 of %2").arg(*page + 1).arg(m_viewpoint.layout().pageCount());
    if (const std::optional<PDFSelection> selected = currentSelection())
        description += u". Selected: " + selected->string().left(kMostDescribedCharacters);
    if (description != accessibleDescription())
        setAccessibleDescription(description);
}

void PDFKitView::followLink(const PDFLink &link)
{
    if (const auto *target = std::get_if<PDFDestination>(&link.target))
        goToPosition({target->pageIndex, target->position});
    else
        Q_EMIT linkActivated(std::get<QUrl>(link.target));
}

void PDFKitView::setHitMarks(const QList<qint64> &pageIndexes, int current)
{
    m_hitMarks->setMarks(pageIndexes, current);
    m_hitMarks->setVisible(m_hitMarks->hasMarks());
    layOutHitMarks();
}

void PDFKitView::layOutHitMarks()
{
    const QRect pages = viewport()->geometry();
    const bool isMirrored = layoutDirection() == Qt::RightToLeft;
    // Over the viewport's margin: beside it they would make every page narrower when a search has hits.
    const int left = isMirrored ? pages.left() : pages.right() + 1 - HitMarkStrip::kWidth;
    m_hitMarks->setGeometry(left, pages.top(), HitMarkStrip::kWidth, pages.height());
}

void PDFKitView::contextMenuEvent(QContextMenuEvent *event)
{
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->setObjectName(QStringLiteral("pageMenu"));
    const PDFPosition at = m_viewpoint.positionAt(viewport()->mapFromGlobal(event->globalPos()));
    const std::optional<PDFLink> link = contents().linkAt(at.pageIndex, at.point);
    if (const QUrl *address = link ? std::get_if<QUrl>(&link->target) : nullptr) {
        menu->addAction(QStringLiteral("Copy Link Address"), this,
                        [text = address->toString()] { QGuiApplication::clipboard()->setText(text); });
        menu->addSeparator();
    }
    menu->addActions({m_copyAction, m_bookmarkAction, m_searchAction});
    menu->addSeparator();
    menu->addAction(m_selectAllAction);
    menu->popup(event->globalPos());
}
