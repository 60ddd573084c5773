#pragma once

#include "base/Clock.h"
#include "reader/Glide.h"
#include "reader/NavigationHistory.h"
#include "reader/PDFView.h"
#include "reader/PageStock.h"
#include "reader/TextSelector.h"
#include "reader/Viewpoint.h"

#include <QAbstractScrollArea>
#include <QUrl>
#include <memory>

class HitMarkStrip;
class PointerGestures;
class QAction;
class QHelpEvent;
class SelectionCopier;

/// Shows a document as one continuous vertical flow of pages, drawn from a byte-limited cache of page
/// pictures. Never waits for the engine. When that was lost it goes on showing what it has, and asks nothing
/// until the same document is set again.
///
/// Scales are given as people know them: 1 is the actual size, where a point of the page is a 72nd of an inch
/// of the screen.
///
/// Its operations lie in four files: PDFKitView.cpp (pages as they come), PDFKitViewPlaces.cpp (jumps,
/// history, scales), PDFKitViewSelection.cpp (selected text, links, menu) and PDFKitViewEvents.cpp (painting
/// and input).
class PDFKitView : public QAbstractScrollArea, public PDFView
{
    Q_OBJECT

public:
    explicit PDFKitView(QWidget *parent = nullptr);
    /// `clock` drives all movement and outlives the view.
    explicit PDFKitView(const Clock &clock, QWidget *parent = nullptr);
    ~PDFKitView() override;

    void setDocument(ReaderDocument *document) override;
    ReaderDocument *document() const override { return m_document; }
    /// As `setDocument`, for pages from elsewhere.
    void setPages(std::unique_ptr<PageSource> pages);
    /// The document was opened again after its engine was lost.
    void resume();

    std::optional<qint64> currentPageIndex() const override;

    std::optional<PDFSelection> currentSelection() const override;
    /// A selection that is set is lit: drawn in another colour than one made by hand.
    void setCurrentSelection(const std::optional<PDFSelection> &selection, Animate animate) override;

    void goToPage(qint64 pageIndex) override;
    void goToPosition(const PDFPosition &position) override;
    void goToSelection(const PDFSelection &selection) override;

    bool canGoBack() const override { return m_history.canGoBack(); }
    bool canGoForward() const override { return m_history.canGoForward(); }
    void goBack() override;
    void goForward() override;
    void forgetHistory() override;

    void zoomIn() override;
    void zoomOut() override;
    void zoomToActualSize() override;
    void scaleAutomatically() override;
    /// Fits one page, and keeps fitting it.
    void scaleToPage();
    /// The point under `fixed` (of the viewport) stays there.
    void zoomBy(double factor, QPointF fixed);
    double zoom() const;
    Viewpoint::Fit fit() const { return m_viewpoint.fit(); }

    enum class Turn { Left, Right };
    void rotatePages(Turn turn);
    void setDarkMode(bool isDark);
    bool isDarkMode() const { return m_isDark; }

    enum class Motion { Instant, Smooth };
    /// Scrolls by pixels; smoothly unless the desktop asks for little motion.
    void scrollBy(QPointF delta, Motion motion);

    void selectAll();
    void copySelection();
    /// By hand, as the pointer does it. A selection that starts without being extended selects nothing yet.
    void startSelection(const TextSelector::Place &place, PDFTextUnit unit);
    void extendSelection(const TextSelector::Place &place);
    /// A selection by hand is complete: the middle button of other programs pastes it.
    void offerSelection() const;
    /// Goes there, or says so with `linkActivated`.
    void followLink(const PDFLink &link);

    /// Marks pages beside the scroll bar; `current` is an index of the list, or -1.
    void setHitMarks(const QList<qint64> &pageIndexes, int current);

    /// Whether every visible page is drawn as sharply as the screen shows it, or cannot be drawn at all.
    bool isSharp() const;

    /// Takes the sizes of pages that have come, without waiting for their event.
    void takeSizes() { m_stock.take(PageJob::Kind::Sizes); }

    const Viewpoint &viewpoint() const { return m_viewpoint; }
    const PageContents &contents() const { return m_stock.contents(); }
    const PageCache &cache() const { return m_stock.cache(); }
    const Clock &clock() const { return m_clock; }

    // For menus, shortcuts and tool bars.
    QAction *copyAction() const { return m_copyAction; }
    QAction *selectAllAction() const { return m_selectAllAction; }
    QAction *bookmarkAction() const { return m_bookmarkAction; }
    QAction *searchInLibraryAction() const { return m_searchAction; }

Q_SIGNALS:
    void zoomChanged();
    /// The last picture of what is visible has come.
    void becameSharp();
    /// The first time that all of what is visible was painted from its own pictures. It is on the screen.
    void firstShown();
    /// A link to the web was followed.
    void linkActivated(const QUrl &address);
    void bookmarkRequested();
    void librarySearchRequested(const QString &text);
    void hitMarkActivated(int index);

protected:
    bool event(QEvent *event) override;
    bool viewportEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    void makeActions();
    void watchStock();
    void adopt(std::unique_ptr<PageSource> pages, ReaderDocument *document);
    double actualScale() const;
    PDFPosition place() const;
    /// Does `move`, which jumps, and remembers the place it leaves.
    template <typename Move> void jump(Move move);
    void tellHistory();
    void goInHistory(const PDFPosition &position);
    void setScale(double scale, QPointF fixed);
    /// After the viewpoint has changed: scroll bars, what to fetch, who to tell.
    void viewpointChanged();
    void updateScrollBars();
    void fetch();
    void selectionMoved();
    void learnSizes(qint64 firstPage, const PageSizes &sizes);
    void tellChanges();
    void describe();
    void scheduleFrame();
    void advanceFrame();
    /// Between 0 and 1 while the light of a selection that was set comes on.
    double litStrength() const;
    bool zoomByPinch(QEvent *event);
    void showAddress(const QHelpEvent &event);
    void layOutHitMarks();
    bool prefersStillness() const;

    const Clock &m_clock;
    Viewpoint m_viewpoint;
    PageStock m_stock;
    TextSelector m_selector;
    NavigationHistory m_history;
    Glide m_glide;
    std::unique_ptr<PendingCall> m_nextFrame;
    std::unique_ptr<PointerGestures> m_gestures;
    std::unique_ptr<SelectionCopier> m_copier;
    HitMarkStrip *m_hitMarks;
    QAction *m_copyAction;
    QAction *m_selectAllAction;
    QAction *m_bookmarkAction;
    QAction *m_searchAction;
    ReaderDocument *m_document = nullptr;
    bool m_isDark = false;
    bool m_wasShown = false;
    bool m_isSettingScrollBars = false;
    double m_scrollUnit = 1;          ///< pixels a step of the vertical scroll bar
    std::optional<qint64> m_jumpedTo; ///< the page that was asked for, until one scrolls
    std::optional<qint64> m_toldPage;
    double m_toldZoom = 0;
    double m_fetchedPixelRatio = 1;
    std::optional<std::chrono::nanoseconds> m_litSince; ///< while the light comes on
};
