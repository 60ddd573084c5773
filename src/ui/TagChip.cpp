#include "ui/TagChip.h"

#include "ui/AccessibleRole.h"
#include "ui/ClaimKeys.h"
#include "ui/Symbols.h"
#include "ui/TextStyles.h"

#include <QKeyEvent>
#include <QPainter>
#include <QStyle>
#include <QToolButton>

namespace
{
// So that a chip fits into the narrowest panel. Chosen.
constexpr int kMaximumTextPx = 150;
constexpr int kSidePx = 9;
constexpr int kAbovePx = 4;
constexpr int kButtonPx = 18;
constexpr int kButtonIconPx = 12;
} // namespace

TagChip::TagChip(const QString &label, QWidget *parent)
    : QFrame(parent)
    , m_label(label)
    , m_remove(new QToolButton(this))
{
    setAccessibleRole(*this, QAccessible::ListItem);
    setObjectName(QString(u"tag " % label));
    setAccessibleName(QString(u"tag " % label));
    setAccessibleDescription(QStringLiteral("Delete removes it"));
    setFont(captionFont(font()));
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    if (fontMetrics().horizontalAdvance(label) > kMaximumTextPx)
        setToolTip(Qt::convertFromPlainText(label, Qt::WhiteSpaceNormal));

    m_remove->setObjectName(QStringLiteral("remove"));
    m_remove->setAccessibleName(QString(u"Remove tag " % label));
    m_remove->setToolTip(QString(u"Remove tag " % label));
    m_remove->setIcon(symbolIcon(Symbol::ClearText));
    m_remove->setIconSize({kButtonIconPx, kButtonIconPx});
    m_remove->setAutoRaise(true);
    // The chip is one stop of the Tab key, not two.
    m_remove->setFocusPolicy(Qt::NoFocus);
    connect(m_remove, &QToolButton::clicked, this, &TagChip::removeRequested);
}

int TagChip::textWidth() const
{
    return qMin(fontMetrics().horizontalAdvance(m_label) + 1, kMaximumTextPx);
}

QSize TagChip::sizeHint() const
{
    return {kSidePx + textWidth() + kButtonPx + kAbovePx,
            qMax(fontMetrics().height(), kButtonPx) + 2 * kAbovePx - 2};
}

void TagChip::resizeEvent(QResizeEvent *event)
{
    QFrame::resizeEvent(event);
    const QRect button(width() - kButtonPx - kAbovePx, (height() - kButtonPx) / 2, kButtonPx, kButtonPx);
    m_remove->setGeometry(QStyle::visualRect(layoutDirection(), rect(), button));
}

bool TagChip::event(QEvent *event)
{
    return claimKeys(event, {Qt::Key_Delete, Qt::Key_Backspace}) || QFrame::event(event);
}

void TagChip::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Delete || event->key() == Qt::Key_Backspace)
        Q_EMIT removeRequested();
    else
        QFrame::keyPressEvent(event);
}

void TagChip::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QColor fill = palette().color(QPalette::Highlight);
    fill.setAlphaF(0.16F);
    const QRectF frame = QRectF(rect()).adjusted(1, 1, -1, -1);
    painter.setPen(hasFocus() ? QPen(palette().color(QPalette::Highlight), 2) : QPen(Qt::NoPen));
    painter.setBrush(fill);
    painter.drawRoundedRect(frame, frame.height() / 2, frame.height() / 2);
    painter.setPen(textColor(palette(), TextTone::Primary));
    const QRect text(kSidePx, 0, textWidth(), height());
    painter.drawText(QStyle::visualRect(layoutDirection(), rect(), text),
                     Qt::AlignVCenter | Qt::TextSingleLine,
                     fontMetrics().elidedText(m_label, Qt::ElideRight, textWidth()));
}
