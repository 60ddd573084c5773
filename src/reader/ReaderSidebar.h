#pragma once

#include <QProperty>
#include <QTabWidget>

class PDFView;
class PDFViewerController;

/// Outline, hits and bookmarks of the document, one pane at a time.
class ReaderSidebar : public QTabWidget
{
    Q_OBJECT

public:
    static constexpr int kWidth = 260; ///< until a person changes it

    enum class Pane { Outline, Search, Bookmarks };

    /// Both must outlive the sidebar.
    ReaderSidebar(PDFViewerController &controller, PDFView &view, QWidget *parent = nullptr);

    Pane pane() const { return Pane(currentIndex()); }
    void showPane(Pane pane) { setCurrentIndex(int(pane)); }
};
