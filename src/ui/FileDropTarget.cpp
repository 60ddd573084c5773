#include "ui/FileDropTarget.h"

#include "reader/Fonts.h"
#include "ui/DragContent.h"

#include <QDropEvent>
#include <QPainter>

namespace
{
constexpr int kFramePx = 12; ///< from the window's edge to the dashed frame
constexpr float kDimmed = 0.8F;
} // namespace

FileDropTarget::FileDropTarget(QWidget *parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("fileDropTarget"));
    setAccessibleName(QStringLiteral("Drop PDFs and folders to import them"));
    setAcceptDrops(true);
    hide();
}

void FileDropTarget::setShown(bool isShown)
{
    setGeometry(parentWidget()->rect());
    setVisible(isShown);
    raise();
}

void FileDropTarget::dragEnterEvent(QDragEnterEvent *event)
{
    // The files stay where they are, whatever was proposed.
    event->setDropAction(Qt::CopyAction);
    event->accept();
}

void FileDropTarget::dropEvent(QDropEvent *event)
{
    event->setDropAction(Qt::CopyAction);
    event->accept();
    Q_EMIT dropped(draggedLocations(event->mimeData()));
}

void FileDropTarget::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QColor veil = palette().color(QPalette::Window);
    veil.setAlphaF(kDimmed);
    painter.fillRect(rect(), veil);

    const QColor accent = palette().color(QPalette::Highlight);
    QColor fill = accent;
    fill.setAlphaF(0.12F);
    painter.setBrush(fill);
    painter.setPen(QPen(accent, 2, Qt::DashLine));
    const QRect frame = rect().adjusted(kFramePx, kFramePx, -kFramePx, -kFramePx);
    painter.drawRoundedRect(frame, 10, 10);

    painter.setFont(boldFont(font(), 1.4));
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(frame, Qt::AlignCenter | Qt::TextWordWrap, accessibleName());
}
