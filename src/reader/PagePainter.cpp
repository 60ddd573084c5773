#include "reader/PagePainter.h"

#include "reader/ReadingPlan.h"

#include <QPainter>
#include <algorithm>

namespace
{
QColor mixed(const QColor &a, const QColor &b, double shareOfB)
{
    const auto mix = [shareOfB](int x, int y) {
        return int(std::lround(x + (y - x) * shareOfB));
    };
    return {mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue())};
}

/// A marker's yellow; over a dark page its glow, dark enough to leave the words their contrast.
constexpr QColor kLitOnLight(255, 221, 64);
constexpr QColor kLitOnDark(112, 88, 0);
constexpr QColor kBackdropOfDark(32, 33, 36);

/// Widths in pixels of the viewport and strengths of the rings that make a page's shadow.
constexpr std::array<std::pair<int, int>, 3> kShadow = {{{3, 10}, {2, 18}, {1, 40}}};
} // namespace

PageColors PageColors::from(const QPalette &palette, bool isDark)
{
    const QColor window = palette.color(QPalette::Window);
    const bool isDesktopDark = window.lightness() < 128;
    const QColor highlight = palette.color(QPalette::Highlight);
    if (isDark) {
        return {isDesktopDark ? window : kBackdropOfDark, Qt::black,  QColor(150, 150, 150), QColor(70, 72, 76),
                mixed(highlight, Qt::black, 0.35),        kLitOnDark, true};
    }
    return {mixed(window, Qt::black, isDesktopDark ? 0.25 : 0.09), Qt::white,   QColor(110, 110, 110), Qt::black,
            mixed(highlight, Qt::white, 0.55),                     kLitOnLight, false};
}

QColor PageColors::faded(const QColor &color, double strength) const
{
    return mixed(isDark ? Qt::black : Qt::white, color, std::clamp(strength, 0.0, 1.0));
}

PagePainter::PagePainter(QPainter &painter, const Viewpoint &viewpoint, PageStock &stock, double pixelRatio)
    : m_painter(painter)
    , m_view(viewpoint)
    , m_stock(stock)
    , m_pixelRatio(pixelRatio)
{
    m_painter.scale(1 / pixelRatio, 1 / pixelRatio);
}

void PagePainter::paintBackdrop(const PageColors &colors)
{
    const QSizeF screen = m_view.viewport() * m_pixelRatio;
    m_painter.fillRect(QRectF(QPointF(), screen).toAlignedRect(), colors.backdrop);
}

void PagePainter::paintPage(qint64 page, const PageColors &colors)
{
    const QRect onScreen = screenRect(page);
    const PageStyle style =
        pageStyle(m_view, m_pixelRatio, colors.isDark, m_stock.cache().limitBytes());
    const auto tiles = tilesWithin(m_view, page, style, QRectF(QPointF(), m_view.viewport()));
    paintEdge(onScreen, colors);
    const bool isWhole = std::all_of(tiles.begin(), tiles.end(), [this](const PageTile &tile) {
        return m_stock.cache().contains(tile);
    });
    if (!isWhole) {
        m_painter.fillRect(onScreen, colors.paper);
        paintStandIns(page, style, onScreen);
    }
    paintPictures(tiles, onScreen);
    if (std::any_of(tiles.begin(), tiles.end(), [this](const PageTile &tile) { return m_stock.hasFailed(tile); }))
        paintFailure(onScreen, colors);
}
