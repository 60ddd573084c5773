#include "ui/TrashTarget.h"

#include "app/LibraryViewModel.h"
#include "ui/DragContent.h"
#include "ui/SearchResultsView.h"
#include "ui/Symbols.h"

#include <QDropEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <algorithm>

namespace
{
/// A paper of those ids, from the grid or from the search results, which go beyond the sidebar's selection.
std::optional<Paper> shownPaper(const LibraryViewModel &vm, const QStringList &ids)
{
    const QList<Paper> papers = vm.papers.value();
    const auto paper = std::ranges::find_if(papers, [&](const Paper &each) { return ids.contains(each.id); });
    if (paper != papers.end())
        return *paper;
    const QList<SearchResult> results = vm.searchResults.value();
    const auto result =
        std::ranges::find_if(results, [&](const SearchResult &each) { return ids.contains(each.paperId); });
    return result == results.end() ? std::nullopt : std::optional(paperIn(*result));
}
} // namespace

TrashTarget::TrashTarget(LibraryViewModel &vm, QWidget *parent)
    : QFrame(parent)
    , m_vm(vm)
{
    setObjectName(QStringLiteral("trashTarget"));
    const QString title = QStringLiteral("Remove from Library");
    setAccessibleName(title);
    setAcceptDrops(true);

    auto *picture = new QLabel(this);
    picture->setPixmap(symbolIcon(Symbol::Delete).pixmap(QSize(16, 16), devicePixelRatioF()));
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(12, 14, 12, 14);
    layout->addStretch();
    layout->addWidget(picture);
    layout->addWidget(new QLabel(title, this));
    layout->addStretch();

    m_observers.push_back(m_vm.trashTargeted.addNotifier([this] { update(); }));
}

void TrashTarget::dragEnterEvent(QDragEnterEvent *event)
{
    if (!isCardDrag(event->mimeData()))
        return;
    event->acceptProposedAction();
    m_vm.trashTargeted = true;
}

void TrashTarget::dragLeaveEvent(QDragLeaveEvent *)
{
    m_vm.trashTargeted = false;
}

void TrashTarget::dropEvent(QDropEvent *event)
{
    m_vm.trashTargeted = false;
    const std::optional<Paper> dropped = shownPaper(m_vm, draggedPaperIds(event->mimeData()));
    if (!dropped)
        return;
    event->acceptProposedAction();
    m_vm.requestDelete(*dropped);
}

void TrashTarget::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor accent = palette().color(QPalette::Highlight);
    QColor fill = accent;
    fill.setAlphaF(m_vm.trashTargeted ? 0.3F : 0.08F);
    painter.setBrush(fill);
    painter.setPen(QPen(accent, m_vm.trashTargeted ? 2 : 1, Qt::DashLine));
    painter.drawRoundedRect(QRectF(rect()).adjusted(6, 2, -6, -6), 6, 6);
}
