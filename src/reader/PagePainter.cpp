#include "reader/PagePainter.h"

#include "reader/ReadingPlan.h"

#include <QPainter>
#include <algorithm>
#include <array>
#include <cmath>

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
constexpr QColor kLitOnLight(255, 226, 92);
constexpr QColor kLitOnDark(112, 88, 0);
constexpr QColor kBackdropOfDark(32, 33, 36);

/// Between two words that a marker passes over in one stroke, in heights of the line. Chosen: a word too
/// short to be looked for fits between.
constexpr double kStrokeGap = 1.2;

bool areOneStroke(const QRectF &left, const QRectF &right)
{
    const double shared = std::min(left.bottom(), right.bottom()) - std::max(left.top(), right.top());
    const double height = std::min(left.height(), right.height());
    const double gap = right.left() - left.right();
    return shared > height / 2 && gap >= 0 && gap < kStrokeGap * height;
}

/// The words of a line that stand side by side as one.
QList<QRectF> joined(QList<QRectF> rectangles)
{
    std::sort(rectangles.begin(), rectangles.end(),
              [](const QRectF &a, const QRectF &b) { return a.left() < b.left(); });
    QList<QRectF> strokes;
    for (const QRectF &rectangle : rectangles) {
        const auto stroke = std::find_if(strokes.begin(), strokes.end(), [&rectangle](const QRectF &left) {
            return areOneStroke(left, rectangle);
        });
        if (stroke != strokes.end())
            *stroke |= rectangle;
        else
            strokes.append(rectangle);
    }
    return strokes;
}

/// Widths in pixels of the viewport and strengths of the rings that make a page's shadow.
constexpr std::array<std::pair<int, int>, 3> kShadow = {{{3, 10}, {2, 18}, {1, 40}}};

/// Qt spreads a translucent filling of 96 rows and more over threads, and waits for them longer than it takes
/// to fill a thin edge.
constexpr int kRowsAtOnce = 64;
} // namespace

PageColors PageColors::from(const QPalette &palette, bool isDark)
{
    const QColor window = palette.color(QPalette::Window);
    const bool isDesktopDark = window.lightness() < 128;
    const QColor highlight = palette.color(QPalette::Highlight);
    if (isDark) {
        return {isDesktopDark ? window : kBackdropOfDark,
                Qt::black,
                QColor(150, 150, 150),
                QColor(70, 72, 76),
                mixed(highlight, Qt::black, 0.35),
                kLitOnDark,
                true};
    }
    return {mixed(window, Qt::black, isDesktopDark ? 0.25 : 0.09),
            Qt::white,
            QColor(110, 110, 110),
            Qt::black,
            mixed(highlight, Qt::white, 0.55),
            kLitOnLight,
            false};
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
    QRegion beside(screen());
    const PageRange visible = m_view.visiblePages();
    if (m_view.layout().hasSizes()) {
        for (qint64 page = visible.first; page <= visible.last; ++page)
            beside -= screenRect(page);
    }
    fill(beside, colors.backdrop);
}

void PagePainter::paintPage(qint64 page, const PageColors &colors)
{
    const QRect onScreen = screenRect(page);
    PageCache &cache = m_stock.cache();
    const PageStyle style = pageStyle(m_view, m_pixelRatio, colors.isDark, cache.limitBytes());
    const auto tiles = tilesWithin(m_view, page, style, QRectF(QPointF(), m_view.viewport()));
    const auto isThere = [&cache](const PageTile &tile) {
        return cache.contains(tile);
    };
    const auto isImpossible = [this](const PageTile &tile) {
        return m_stock.hasFailed(tile);
    };
    paintEdge(onScreen, colors);
    if (!std::all_of(tiles.begin(), tiles.end(), isThere)) {
        m_painter.fillRect(onScreen, colors.paper);
        for (const PageCache::Entry &standIn : cache.standIns(page, style))
            paintPicture(standIn.tile, standIn.picture, onScreen);
    }
    for (const PageTile &tile : tiles) {
        if (const QImage *picture = cache.find(tile))
            paintPicture(tile, *picture, onScreen);
    }
    if (std::any_of(tiles.begin(), tiles.end(), isImpossible))
        paintFailure(onScreen, colors);
}

void PagePainter::paintMarks(qint64 page, const QList<QRectF> &rectangles, const QColor &color, bool isDark)
{
    const QTransform transform = m_view.pageTransform(page);
    m_painter.setCompositionMode(isDark ? QPainter::CompositionMode_Screen
                                        : QPainter::CompositionMode_Multiply);
    QRegion marked; // one region, so that rectangles that overlap do not mark twice
    for (const QRectF &rectangle : joined(rectangles)) {
        const QRectF shown = transform.mapRect(rectangle);
        marked += QRectF(shown.topLeft() * m_pixelRatio, shown.size() * m_pixelRatio).toAlignedRect();
    }
    for (const QRect &part : marked &screenRect(page))
        m_painter.fillRect(part, color);
    m_painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
}

QRect PagePainter::screenRect(qint64 page) const
{
    const QRectF shown = m_view.pageRect(page);
    return {(shown.topLeft() * m_pixelRatio).toPoint(),
            pagePixels(m_view.layout().size(page), m_view.scale() * m_pixelRatio)};
}

void PagePainter::paintEdge(const QRect &page, const PageColors &colors)
{
    for (const auto &[width, alpha] : kShadow) {
        const int spread = std::max(1, int(std::lround(width * m_pixelRatio)));
        QColor shade = colors.edge;
        shade.setAlpha(colors.isDark ? 2 * alpha : alpha);
        // Around the page only: translucent colour under a whole page took longer than the page itself.
        fill(QRegion(page.adjusted(-spread, -spread, spread, spread) & screen()) - page, shade);
    }
}

void PagePainter::fill(const QRegion &region, const QColor &color)
{
    for (const QRect &part : region) {
        for (int y = part.top(); y <= part.bottom(); y += kRowsAtOnce)
            m_painter.fillRect(part & QRect(part.x(), y, part.width(), kRowsAtOnce), color);
    }
}

QRect PagePainter::screen() const
{
    return QRectF(QPointF(), m_view.viewport() * m_pixelRatio).toAlignedRect();
}

void PagePainter::paintPicture(const PageTile &tile, const QImage &picture, const QRect &page)
{
    const QSize whole = pagePixels(m_view.layout().size(tile.page), tile.style.scale);
    if (whole == page.size()) {
        m_painter.drawImage(page.topLeft() + tile.part.topLeft(), picture);
        return;
    }
    const double ratioX = double(page.width()) / whole.width();
    const double ratioY = double(page.height()) / whole.height();
    const QRectF part(tile.part.x() * ratioX, tile.part.y() * ratioY, tile.part.width() * ratioX,
                      tile.part.height() * ratioY);
    m_painter.setRenderHint(QPainter::SmoothPixmapTransform);
    m_painter.drawImage(part.translated(page.topLeft()), picture);
    m_painter.setRenderHint(QPainter::SmoothPixmapTransform, false);
}

void PagePainter::paintFailure(const QRect &page, const PageColors &colors)
{
    m_painter.setPen(colors.ink);
    QFont font = m_painter.font();
    font.setPixelSize(std::max(1, int(std::lround(14 * m_pixelRatio))));
    m_painter.setFont(font);
    m_painter.drawText(page, Qt::AlignCenter | Qt::TextWordWrap, QStringLiteral("This page cannot be shown"));
}
