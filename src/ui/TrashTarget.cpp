#include "ui/TrashTarget.h"

#include "app/LibraryViewModel.h"
#include "ui/DragContent.h"
#include "ui/Symbols.h"

#include <QDropEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <algorithm>

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
    const QStringList ids = draggedPaperIds(event->mimeData());
    const QList<Paper> papers = m_vm.papers.value();
    const auto dropped =
        std::ranges::find_if(papers, [&](const Paper &paper) { return ids.contains(paper.id); });
    if (dropped == papers.end())
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
