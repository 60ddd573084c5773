#include "reader/PDFKitView.h"

#include "reader/DocumentPages.h"
#include "reader/HitMarkStrip.h"
#include "reader/PointerGestures.h"
#include "reader/ReaderDocument.h"
#include "reader/ReadingPlan.h"
#include "reader/SelectionCopier.h"

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
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
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
        resume();
    else
        adopt(document ? std::make_unique<DocumentPages>(*document) : nullptr, document);
}

void PDFKitView::setPages(std::unique_ptr<PageSource> pages)
{
    adopt(std::move(pages), nullptr);
}

void PDFKitView::adopt(std::unique_ptr<PageSource> pages, ReaderDocument *document)
{
    m_document = document;
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
    const auto policy = m_viewpoint.isWiderThanViewport() ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff;
    if (policy != horizontalScrollBarPolicy())
        setHorizontalScrollBarPolicy(policy); // resizes the viewport, before anything is computed by it
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

// Before it is on the screen the view does not know its size, but may learn those of the pages.
void PDFKitView::fetch()
{
    if (!isVisible() && m_viewpoint.layout().hasSizes())
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
