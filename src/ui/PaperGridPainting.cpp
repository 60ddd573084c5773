#include "ui/CoverCache.h"
#include "ui/PaperGrid.h"

#include <QElapsedTimer>
#include <QPaintEvent>
#include <QPainter>

namespace
{
/// Of a frame of 16 ms while scrolling, for laying out new texts; what is not done by then comes with the
/// next frame. Somebody who scrolls so fast that cards pass at this rate cannot read them.
constexpr int kMostTextMs = 6;
} // namespace

void PaperGrid::updateCard(int row)
{
    constexpr int kReach = CardPainter::kRingReach + 1;
    if (row >= 0 && row < m_papers.rowCount())
        viewport()->update(cardInViewport(row).adjusted(-kReach, -kReach, kReach, kReach));
}

void PaperGrid::updateCardsShowing(const QString &path)
{
    const auto cards = visibleCards(viewport()->rect());
    for (int row = cards.first; row <= cards.last; ++row) {
        const Paper &paper = m_papers.paper(row);
        if (paper.coverPath == path || paper.filepath == path)
            updateCard(row);
    }
}

void PaperGrid::changeEvent(QEvent *event)
{
    QAbstractItemView::changeEvent(event);
    // Whoever comes back from elsewhere may have moved files there.
    if (event->type() == QEvent::ActivationChange && isActiveWindow())
        recheckFiles();
    if (event->type() == QEvent::FontChange)
        m_style = CardStyle(font(), m_kind);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::PaletteChange ||
        event->type() == QEvent::StyleChange)
        forgetLooks();
}

void PaperGrid::forgetLooks()
{
    m_painter.reset();
    m_texts.clear();
    updateGeometries();
    viewport()->update();
}

const CardText &PaperGrid::textOf(int row)
{
    if (CardText *known = m_texts.object(row))
        return *known;
    auto text = std::make_unique<CardText>(m_papers.card(row), m_query, m_style, palette());
    CardText *made = text.release();
    m_texts.insert(row, made);
    return *made;
}

void PaperGrid::paintEvent(QPaintEvent *event)
{
    QPainter painter(viewport());
    const QRect area = m_motion.isMoving() ? viewport()->rect() : event->rect();
    const auto cards = visibleCards(area);
    QElapsedTimer time;
    time.start();
    for (int row = cards.first; row <= cards.last; ++row) {
        const bool mayMakeText = !m_isScrolling || time.elapsed() < kMostTextMs;
        const CardText *text = mayMakeText ? &textOf(row) : m_texts.object(row);
        paintCard(painter, row, text);
        if (!text)
            updateCard(row);
    }
    m_isScrolling = false;
}

void PaperGrid::paintCard(QPainter &painter, int row, const CardText *text)
{
    PaperGridItem card = item(row);
    CardPainter &look = cardPainter(painter.device()->devicePixelRatioF());
    const QPixmap cover = m_covers.cover(card.paper.coverPath, look.coverBox());
    if (!cover.isNull())
        card.image = cover;
    const QRectF place = cardInViewport(row);
    const auto pose = m_motion.pose(card.paper.id, place.topLeft());
    painter.setOpacity(pose.opacity);
    look.paint(painter, {pose.topLeft, place.size()}, card, text,
               {.isHovered = row == m_hovered,
                .hasFocus = hasFocus() && row == currentIndex().row(),
                .isFileMissing = isFileMissing(row)});
}
