#include "ui/PathButton.h"

#include "platform/Paths.h"
#include "ui/Symbols.h"
#include "ui/TextStyles.h"
#include "ui/WrappedText.h"

#include <QAccessible>
#include <QClipboard>
#include <QGuiApplication>
#include <QPainter>
#include <QStyleOptionFocusRect>

namespace
{
using namespace std::chrono_literals;

// Long enough to be read, short enough to be gone before the path is wanted again. Chosen.
constexpr auto kSayingTime = 1500ms;
constexpr int kMaximumLines = 3;
constexpr int kIconPx = 16;
constexpr int kGapPx = 6;
constexpr int kMarginPx = 2;
} // namespace

PathButton::PathButton(const Clock &clock, QWidget *parent)
    : QAbstractButton(parent)
    , m_clock(clock)
{
    setObjectName(QStringLiteral("path"));
    setAccessibleName(QStringLiteral("Copy path"));
    setFont(captionFont(font()));
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    connect(this, &QAbstractButton::clicked, this, &PathButton::copy);
}

void PathButton::setPath(const QString &path)
{
    if (path == m_path)
        return;
    m_path = path;
    m_saying.reset();
    setToolTip(Qt::convertFromPlainText(QString(path % u"\n\nClick to copy"), Qt::WhiteSpaceNormal));
    setAccessibleDescription(path);
    updateGeometry();
    update();
}

void PathButton::copy()
{
    QGuiApplication::clipboard()->setText(m_path);
    m_saying = m_clock.callAfter(kSayingTime, [this] {
        m_saying.reset();
        setAccessibleDescription(m_path);
        update();
    });
    setAccessibleDescription(QStringLiteral("Copied"));
    QAccessibleEvent said(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&said);
    update();
}

WrappedText PathButton::wrapped() const
{
    return {.text = pathForPeople(m_path),
            .font = font(),
            .maximumLines = kMaximumLines,
            .elide = Qt::ElideMiddle,
            .direction = layoutDirection()};
}

int PathButton::heightForWidth(int width) const
{
    return qMax(kIconPx, wrapped().heightForWidth(width - kIconPx - kGapPx - 2 * kMarginPx)) + 2 * kMarginPx;
}

QSize PathButton::sizeHint() const
{
    constexpr int kWidth = 200; // layouts ask heightForWidth
    return {kWidth, heightForWidth(kWidth)};
}

QSize PathButton::minimumSizeHint() const
{
    return {kIconPx + kGapPx + 8 * fontMetrics().averageCharWidth(), kIconPx + 2 * kMarginPx};
}

void PathButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QRect inner = rect().adjusted(kMarginPx, kMarginPx, -kMarginPx, -kMarginPx);
    const QRect icon(inner.topLeft(), QSize(kIconPx, kIconPx));
    const QRect text = inner.adjusted(kIconPx + kGapPx, 0, 0, 0);
    symbolIcon(Symbol::Copy).paint(&painter, QStyle::visualRect(layoutDirection(), inner, icon));
    WrappedText shown = wrapped();
    if (saysCopied())
        shown.text = QStringLiteral("Copied");
    painter.setPen(
        textColor(palette(), underMouse() || saysCopied() ? TextTone::Primary : TextTone::Secondary));
    shown.draw(painter, QStyle::visualRect(layoutDirection(), inner, text));
    if (hasFocus()) {
        QStyleOptionFocusRect option;
        option.initFrom(this);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
    }
}
