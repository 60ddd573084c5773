#include "ui/CoverView.h"

#include "ui/CoverCache.h"
#include "ui/Symbols.h"
#include "ui/TextStyles.h"

#include <QPainter>

namespace
{
// The box is always the same one, so that a panel that is being resized has no cover decoded anew.
constexpr QSize kBoxPx{288, 240};
constexpr QSize kPlaceholderPx{180, 240};
constexpr int kPlaceholderIconPx = 48;
constexpr qreal kRadiusPx = 6;

QColor softBorder(const QPalette &palette)
{
    QColor color = palette.color(QPalette::WindowText);
    color.setAlphaF(0.2F);
    return color;
}

QRectF fitted(const QSizeF &size, const QRectF &bounds)
{
    QRectF frame({}, size.scaled(bounds.size(), Qt::KeepAspectRatio));
    frame.moveCenter(bounds.center());
    return frame;
}
} // namespace

CoverView::CoverView(CoverCache &covers, QWidget *parent)
    : QWidget(parent)
    , m_covers(covers)
{
    setObjectName(QStringLiteral("cover"));
    setAccessibleName(QStringLiteral("Cover"));
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    connect(&covers, &CoverCache::arrived, this, [this](const QString &path) {
        if (path == m_coverPath)
            update();
    });
}

void CoverView::setCoverPath(const QString &coverPath)
{
    m_coverPath = coverPath;
    update();
}

QSize CoverView::sizeHint() const
{
    return kBoxPx;
}

QSize CoverView::minimumSizeHint() const
{
    return {0, kBoxPx.height()};
}

void CoverView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    const QPixmap cover =
        m_coverPath.isEmpty() ? QPixmap() : m_covers.cover(m_coverPath, kBoxPx * devicePixelRatioF());
    if (cover.isNull())
        return paintPlaceholder(painter);
    const QRectF frame = fitted(cover.size(), rect());
    painter.drawPixmap(frame, cover, cover.rect());
    painter.setPen(softBorder(palette()));
    painter.drawRect(frame.adjusted(0.5, 0.5, -0.5, -0.5));
}

void CoverView::paintPlaceholder(QPainter &painter) const
{
    const QRectF sheet = fitted(kPlaceholderPx, rect());
    QColor fill = textColor(palette(), TextTone::Secondary);
    fill.setAlphaF(0.1F);
    painter.setPen(Qt::NoPen);
    painter.setBrush(fill);
    painter.drawRoundedRect(sheet, kRadiusPx, kRadiusPx);
    QRect icon(0, 0, kPlaceholderIconPx, kPlaceholderIconPx);
    icon.moveCenter(sheet.center().toPoint());
    symbolIcon(Symbol::Document).paint(&painter, icon);
}
