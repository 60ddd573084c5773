#pragma once

#include <QPointF>
#include <QString>
#include <functional>
#include <optional>

class PDFSelection;
class ReaderDocument;

/// A position in a document: the point of the page (points, origin top left after rotation) that lies at the
/// upper left of the view.
struct PDFPosition {
    qint64 pageIndex = 0; ///< 0-based
    QPointF point;

    friend bool operator==(const PDFPosition &, const PDFPosition &) = default;
};

/// What a reader's controller asks of the view that shows the document; `PDFKitView` is the one on a screen.
/// Main thread.
class PDFView
{
public:
    virtual ~PDFView() = default;

    /// Shows `document`, which must outlive the view or the next call; null shows nothing.
    virtual void setDocument(ReaderDocument *document) = 0;
    virtual ReaderDocument *document() const = 0;

    /// 0-based; absent without a document or pages.
    virtual std::optional<qint64> currentPageIndex() const = 0;

    virtual std::optional<PDFSelection> currentSelection() const = 0;
    enum class Animate { No, Yes };
    virtual void setCurrentSelection(const std::optional<PDFSelection> &selection, Animate animate) = 0;

    // Each jump remembers the exact position left; scrolling does not.
    virtual void goToPage(qint64 pageIndex) = 0;
    virtual void goToPosition(const PDFPosition &position) = 0;
    /// Makes the selection's first line visible.
    virtual void goToSelection(const PDFSelection &selection) = 0;

    virtual bool canGoBack() const = 0;
    virtual bool canGoForward() const = 0;
    virtual void goBack() = 0;
    virtual void goForward() = 0;
    /// There is no way back from here.
    virtual void forgetHistory() = 0;

    virtual void zoomIn() = 0;
    virtual void zoomOut() = 0;
    virtual void zoomToActualSize() = 0;   ///< a point of the page is a 72nd of an inch on the screen
    virtual void scaleAutomatically() = 0; ///< fits the width, and keeps fitting it

    // Told after a change; called on the main thread.
    std::function<void()> pageChanged;
    std::function<void()> selectionChanged;
    std::function<void()> historyChanged; ///< or a jump led to where one was
};
