#include "reader/PathText.h"

#include <QEvent>
#include <QTextDocument>
#include <QTextOption>
#include <cmath>

PathText::PathText(int width, QWidget *parent)
    : QTextEdit(parent)
{
    setReadOnly(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse);
    setFrameShape(QFrame::NoFrame);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::ClickFocus);
    setAccessibleName(QStringLiteral("File"));
    viewport()->setAutoFillBackground(false);
    setFixedWidth(width);
    QTextOption option(Qt::AlignHCenter);
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    document()->setDefaultTextOption(option);
    document()->setDocumentMargin(0);
}

void PathText::setPath(const QString &path)
{
    setPlainText(path);
    setToolTip(Qt::convertFromPlainText(path, Qt::WhiteSpaceNormal));
    fitHeight();
}

void PathText::changeEvent(QEvent *event)
{
    QTextEdit::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        fitHeight();
}

void PathText::fitHeight()
{
    document()->setTextWidth(width());
    setFixedHeight(int(std::ceil(document()->size().height())));
}
