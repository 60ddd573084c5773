#include "reader/HitMarkStrip.h"

#include <QMouseEvent>
#include <QPainter>
#include <cmath>

namespace
{
constexpr int kMarkHeight = 3;
/// A click this far from a mark still hits it.
constexpr int kReach = 6;
} // namespace

HitMarkStrip::HitMarkStrip(QWidget *parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("hitMarks"));
    setAccessibleName(QStringLiteral("Search hits"));
    setCursor(Qt::PointingHandCursor);
}

void HitMarkStrip::setMarks(const QList<qint64> &pageIndexes, int current)
{
    m_pageIndexes = pageIndexes;
    m_current = current;
    update();
}

void HitMarkStrip::setPageCount(qint64 pageCount)
{
    m_pageCount = pageCount;
    update();
}

QRect HitMarkStrip::markOf(qint64 pageIndex) const
{
    const double share = m_pageCount > 0 ? (double(pageIndex) + 0.5) / double(m_pageCount) : 0;
    const int y = int(std::lround(share * (height() - kMarkHeight)));
    return {1, y, width() - 2, kMarkHeight};
}

void HitMarkStrip::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    QColor color = palette().color(QPalette::Highlight);
    color.setAlpha(150);
    for (const qint64 page : m_pageIndexes)
        painter.fillRect(markOf(page), color);
    if (m_current >= 0 && m_current < m_pageIndexes.size())
        painter.fillRect(markOf(m_pageIndexes[m_current]).adjusted(-1, -1, 1, 1),
                         palette().color(QPalette::Highlight));
}

void HitMarkStrip::mousePressEvent(QMouseEvent *event)
{
    event->accept();
}

void HitMarkStrip::mouseReleaseEvent(QMouseEvent *event)
{
    int nearest = -1;
    int least = kReach + 1;
    for (int i = 0; i < m_pageIndexes.size(); ++i) {
        const int distance = std::abs(markOf(m_pageIndexes[i]).center().y() - event->pos().y());
        if (distance < least) {
            least = distance;
            nearest = i;
        }
    }
    if (nearest >= 0)
        Q_EMIT activated(nearest);
}
