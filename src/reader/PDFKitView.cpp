#include "reader/PDFKitView.h"

#include "reader/DocumentPages.h"
#include "reader/HitMarkStrip.h"
#include "reader/PointerGestures.h"
#include "reader/ReaderDocument.h"
#include "reader/ReadingPlan.h"
#include "reader/SelectionCopier.h"
#include "reader/ZoomSteps.h"

#include <QScrollBar>
#include <QStyle>
#include <algorithm>
#include <cmath>

namespace
{
const Clock &systemClock()
{
    static const SystemClock clock;
    return clock;
}

/// How far a scroll bar counts; longer documents are scrolled in larger steps with it.
constexpr double kMostScrollSteps = 1e9;
/// Of the scroll bars' arrows.
constexpr int kLineStep = 40;
/// Two places nearer than this, in pixels, are the same one.
constexpr double kSamePlace = 1;
/// Where a passage comes to stand: below so much of the viewport's height, behind so much of its width.
constexpr double kShareAbove = 0.3;
constexpr double kShareBefore = 0.1;
} // namespace

PDFKitView::PDFKitView(QWidget *parent)
    : PDFKitView(systemClock(), parent)
{
}

PDFKitView::PDFKitView(const Clock &clock, QWidget *parent)
    : QAbstractScrollArea(parent)
    , m_clock(clock)
    , m_selector(m_stock.contents())
    , m_gestures(std::make_unique<PointerGestures>(*this))
    , m_hitMarks(new HitMarkStrip(this))
{
    setObjectName(QStringLiteral("pdfView"));
    setAccessibleName(QStringLiteral("Document"));
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::StrongFocus);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn); // else a fit to the width would move it
    viewport()->setMouseTracking(true);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    viewport()->grabGesture(Qt::PinchGesture);
    m_hitMarks->hide();
    connect(m_hitMarks, &HitMarkStrip::activated, this, &PDFKitView::hitMarkActivated);
    makeActions();
    watchStock();
}

PDFKitView::~PDFKitView() = default;

void PDFKitView::watchStock()
{
    m_stock.sizesArrived = [this](qint64 first, const PageSizes &sizes) {
        learnSizes(first, sizes);
    };
    m_stock.pictureArrived = [this](qint64 page) {
        if (!m_viewpoint.visiblePages().contains(page))
            return;
        viewport()->update();
        if (isSharp())
            Q_EMIT becameSharp();
    };
    m_stock.contentArrived = [this](qint64 page) {
        m_gestures->updateCursor();
        if (m_selector.pages().contains(page))
            selectionMoved();
    };
}

void PDFKitView::setDocument(ReaderDocument *document)
{
    const bool isSameAgain = document && document == m_document && m_stock.source() &&
                             m_stock.source()->pageCount() == m_viewpoint.layout().pageCount();
    if (isSameAgain)
        return resume();
    setPages(document ? std::make_unique<DocumentPages>(*document) : nullptr);
    m_document = document;
}

void PDFKitView::setPages(std::unique_ptr<PageSource> pages)
{
    m_document = nullptr;
    m_copier.reset();
    m_glide.stop();
    m_jumpedTo.reset();
    m_selector.clear();
    m_history.clear();
    m_viewpoint.reset(pages ? pages->pageCount() : 0);
    m_stock.setSource(std::move(pages));
    m_hitMarks->setPageCount(m_viewpoint.layout().pageCount());
    viewpointChanged();
    selectionMoved();
    tellHistory();
}

void PDFKitView::resume()
{
    m_stock.resume();
    fetch();
}

std::optional<qint64> PDFKitView::currentPageIndex() const
{
    if (m_jumpedTo && m_viewpoint.visiblePages().contains(*m_jumpedTo))
        return m_jumpedTo;
    return m_viewpoint.currentPage();
}

PDFPosition PDFKitView::place() const
{
    return m_viewpoint.positionAt({});
}

template <typename Move> void PDFKitView::jump(Move move)
{
    const PDFPosition left = place();
    m_glide.stop();
    m_jumpedTo.reset();
    move();
    const PDFPosition now = place();
    const double distance = (now.point - left.point).manhattanLength() * m_viewpoint.scale();
    if (now.pageIndex != left.pageIndex || distance >= kSamePlace) {
        m_history.leave(left);
        tellHistory();
    }
    viewpointChanged();
}

void PDFKitView::goToPage(qint64 pageIndex)
{
    if (pageIndex < 0 || pageIndex >= m_viewpoint.layout().pageCount())
        return;
    jump([this, pageIndex] {
        m_viewpoint.jumpToPage(pageIndex);
        m_jumpedTo = pageIndex;
    });
}

void PDFKitView::goToPosition(const PDFPosition &position)
{
    jump([this, position] { m_viewpoint.jump(position, {}); });
}

void PDFKitView::goToSelection(const PDFSelection &selection)
{
    if (selection.isEmpty())
        return;
    const qint64 page = selection.pages().first();
    const QRectF line = selection.lineRectangles(page).value(0);
    const QRectF frame(QPointF(), m_viewpoint.viewport());
    const auto shown = [&] {
        return m_viewpoint.pageTransform(page).mapRect(line);
    };
    if (frame.contains(shown()))
        return;
    jump([&] {
        m_viewpoint.jumpToPage(page);
        const QRectF there = shown();
        const bool isBeside = there.left() < frame.left() || there.right() > frame.right();
        m_viewpoint.moveTo(m_viewpoint.offset() +
                           QPointF(isBeside ? there.left() - kShareBefore * frame.width() : 0,
                                   there.top() - kShareAbove * frame.height()));
        m_jumpedTo = page;
    });
}

void PDFKitView::goBack()
{
    if (canGoBack())
        goInHistory(m_history.goBack(place()));
}

void PDFKitView::goForward()
{
    if (canGoForward())
        goInHistory(m_history.goForward(place()));
}

void PDFKitView::goInHistory(const PDFPosition &position)
{
    m_glide.stop();
    m_jumpedTo.reset();
    m_viewpoint.jump(position, {});
    tellHistory();
    viewpointChanged();
}

void PDFKitView::tellHistory()
{
    if (historyChanged)
        historyChanged();
}

double PDFKitView::actualScale() const
{
    return logicalDpiX() / 72.0;
}

double PDFKitView::zoom() const
{
    return m_viewpoint.scale() / actualScale();
}

void PDFKitView::setScale(double scale, QPointF fixed)
{
    m_glide.stop();
    m_viewpoint.setScale(scale, fixed);
    viewpointChanged();
}

void PDFKitView::zoomBy(double factor, QPointF fixed)
{
    setScale(m_viewpoint.scale() * factor, fixed);
}

void PDFKitView::zoomIn()
{
    setScale(nextLargerScale(zoom()) * actualScale(), QRectF(viewport()->rect()).center());
}

void PDFKitView::zoomOut()
{
    setScale(nextSmallerScale(zoom()) * actualScale(), QRectF(viewport()->rect()).center());
}

void PDFKitView::zoomToActualSize()
{
    setScale(actualScale(), QRectF(viewport()->rect()).center());
}

void PDFKitView::scaleAutomatically()
{
    m_glide.stop();
    m_viewpoint.setFit(Viewpoint::Fit::Width);
    viewpointChanged();
}

void PDFKitView::scaleToPage()
{
    m_glide.stop();
    m_viewpoint.setFit(Viewpoint::Fit::Page);
    viewpointChanged();
}

void PDFKitView::rotatePages(Turn turn)
{
    m_glide.stop();
    m_viewpoint.setTurns(m_viewpoint.layout().turns() + (turn == Turn::Right ? 1 : -1));
    viewpointChanged();
}

void PDFKitView::setDarkMode(bool isDark)
{
    m_isDark = isDark;
    viewport()->update();
    fetch();
}

void PDFKitView::scrollBy(QPointF delta, Motion motion)
{
    m_jumpedTo.reset();
    const QPointF from = m_viewpoint.offset();
    const QPointF to = m_viewpoint.clamped((m_glide.isMoving() ? m_glide.target() : from) + delta);
    if (motion == Motion::Smooth && !prefersStillness()) {
        m_glide.start(from, to, m_clock.elapsed());
        return scheduleFrame();
    }
    m_glide.stop();
    m_viewpoint.moveTo(to);
    viewpointChanged();
}

void PDFKitView::learnSizes(qint64 firstPage, const PageSizes &sizes)
{
    const QPointF before = m_viewpoint.offset();
    m_viewpoint.learn(firstPage, sizes);
    m_glide.shift(m_viewpoint.offset() - before);
    viewpointChanged();
}

void PDFKitView::viewpointChanged()
{
    updateScrollBars();
    fetch();
    m_gestures->updateCursor();
    viewport()->update();
    tellChanges();
}

void PDFKitView::updateScrollBars()
{
    m_isSettingScrollBars = true;
    const QRectF places = m_viewpoint.offsets();
    const QPointF at = m_viewpoint.offset() - places.topLeft();
    m_scrollUnit = std::max(1.0, places.height() / kMostScrollSteps);
    horizontalScrollBar()->setRange(0, int(std::lround(places.width())));
    horizontalScrollBar()->setPageStep(viewport()->width());
    horizontalScrollBar()->setSingleStep(kLineStep);
    horizontalScrollBar()->setValue(int(std::lround(at.x())));
    verticalScrollBar()->setRange(0, int(std::lround(places.height() / m_scrollUnit)));
    verticalScrollBar()->setPageStep(std::max(1, int(viewport()->height() / m_scrollUnit)));
    verticalScrollBar()->setSingleStep(std::max(1, int(kLineStep / m_scrollUnit)));
    verticalScrollBar()->setValue(int(std::lround(at.y() / m_scrollUnit)));
    m_isSettingScrollBars = false;
}

// Before it is on the screen the view does not know its size.
void PDFKitView::fetch()
{
    if (!isVisible())
        return;
    m_fetchedPixelRatio = devicePixelRatioF();
    m_stock.fetch({m_viewpoint, m_fetchedPixelRatio, m_isDark, m_selector.pages()});
}

bool PDFKitView::isSharp() const
{
    const PageStyle style = pageStyle(m_viewpoint, devicePixelRatioF(), m_isDark, cache().limitBytes());
    const QRectF frame(QPointF(), m_viewpoint.viewport());
    const PageRange visible = m_viewpoint.visiblePages();
    for (qint64 page = visible.first; page <= visible.last; ++page) {
        const auto tiles = tilesWithin(m_viewpoint, page, style, frame);
        const bool isDrawn = std::all_of(tiles.begin(), tiles.end(), [this](const PageTile &tile) {
            return cache().contains(tile) || m_stock.hasFailed(tile);
        });
        if (!m_viewpoint.layout().isKnown(page) || !isDrawn)
            return false;
    }
    return m_viewpoint.layout().hasSizes();
}

void PDFKitView::tellChanges()
{
    const std::optional<qint64> page = currentPageIndex();
    if (page != m_toldPage) {
        m_toldPage = page;
        describe();
        if (pageChanged)
            pageChanged();
    }
    if (zoom() != m_toldZoom) {
        m_toldZoom = zoom();
        Q_EMIT zoomChanged();
    }
}

bool PDFKitView::prefersStillness() const
{
    return style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, this) == 0;
}
