#include "ui/ProgressOverlay.h"

#include "reader/Fonts.h"

#include <QApplication>
#include <QEvent>
#include <QLabel>
#include <QPainter>
#include <QProgressBar>
#include <QVBoxLayout>
#include <algorithm>

namespace
{
constexpr int kCardWidthPx = 360;
constexpr int kCardMarginPx = 24;
constexpr int kBarSteps = 1000; ///< a bar's unit: finer than its pixels
constexpr float kDimmed = 0.6F; ///< chosen: what lies below can be made out and does not distract
} // namespace

ProgressOverlay::ProgressOverlay(const QString &title, QWidget *covered)
    : QWidget(covered->parentWidget())
    , m_covered(covered)
    , m_card(new QFrame(this))
    , m_cardLayout(new QVBoxLayout(m_card))
    , m_bar(new QProgressBar(m_card))
{
    setAccessibleName(title);
    setFocusPolicy(Qt::StrongFocus);
    layOut(title);
    m_count = addLine(QStringLiteral("progressCount"));
    m_covered->installEventFilter(this);
    hide();
}

void ProgressOverlay::layOut(const QString &title)
{
    auto *heading = new QLabel(title, m_card);
    heading->setObjectName(QStringLiteral("overlayTitle"));
    heading->setFont(boldFont(heading->font(), 1.2));
    m_bar->setObjectName(QStringLiteral("overlayProgress"));
    m_bar->setAccessibleName(title);
    m_bar->setRange(0, kBarSteps);
    m_bar->setTextVisible(false);

    m_card->setAutoFillBackground(true);
    m_card->setFrameShape(QFrame::StyledPanel);
    m_card->setFixedWidth(kCardWidthPx);
    m_cardLayout->setContentsMargins(kCardMarginPx, 20, kCardMarginPx, 20);
    m_cardLayout->setSpacing(8);
    m_cardLayout->addWidget(heading);
    m_cardLayout->addWidget(m_bar);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_card, 0, Qt::AlignCenter);
}

QLabel *ProgressOverlay::addLine(const QString &name)
{
    auto *line = new QLabel(m_card);
    line->setObjectName(name);
    line->setTextFormat(Qt::PlainText);
    m_cardLayout->addWidget(line);
    return line;
}

int ProgressOverlay::lineWidth() const
{
    return kCardWidthPx - 2 * kCardMarginPx;
}

void ProgressOverlay::setShown(bool isShown)
{
    if (isShown == isVisibleTo(parentWidget()))
        return;
    if (isShown) {
        m_focusBefore = window()->focusWidget();
        setGeometry(m_covered->geometry());
        m_covered->setEnabled(false);
        show();
        raise();
        focusTarget()->setFocus(Qt::OtherFocusReason);
    } else {
        hide();
        m_covered->setEnabled(!isCoveredByAnother());
        if (m_focusBefore)
            m_focusBefore->setFocus(Qt::OtherFocusReason);
    }
}

bool ProgressOverlay::isCoveredByAnother() const
{
    const auto overlays = parentWidget()->findChildren<ProgressOverlay *>(Qt::FindDirectChildrenOnly);
    return std::ranges::any_of(overlays, [this](const ProgressOverlay *overlay) {
        return overlay->m_covered == m_covered && overlay->isVisibleTo(parentWidget());
    });
}

void ProgressOverlay::setProgress(double fraction, int done, int total)
{
    m_bar->setValue(qRound(fraction * kBarSteps));
    m_count->setText(QStringLiteral("%1 of %2").arg(done).arg(total));
}

bool ProgressOverlay::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Resize || event->type() == QEvent::Move)
        setGeometry(m_covered->geometry());
    return QWidget::eventFilter(watched, event);
}

void ProgressOverlay::paintEvent(QPaintEvent *)
{
    QColor veil = palette().color(QPalette::Window);
    veil.setAlphaF(kDimmed);
    QPainter(this).fillRect(rect(), veil);
}
