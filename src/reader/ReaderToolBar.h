#pragma once

#include <QToolBar>

class PDFViewerController;
class PageField;
class ReaderActions;
class ReaderSearchField;

/// The reader's tool bar. It cannot be moved, and nothing in it moves while one reads.
class ReaderToolBar : public QToolBar
{
    Q_OBJECT

public:
    /// Both must outlive the tool bar.
    ReaderToolBar(ReaderActions &actions, PDFViewerController &controller, QWidget *parent = nullptr);

    PageField &pageField() { return *m_pageField; }
    ReaderSearchField &searchField() { return *m_searchField; }

private:
    void addMenu(QAction *action);

    PageField *m_pageField;
    ReaderSearchField *m_searchField;
};
