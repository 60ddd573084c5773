#pragma once

#include "reader/PDFOpenRequest.h"

#include <QList>
#include <QProperty>
#include <QWidget>
#include <vector>

class CoverCache;
class EmptyState;
class LibraryGrid;
class LibraryViewModel;
class PaperGrid;
class QStackedWidget;
class SearchField;
class SearchResultsView;

/// The middle of the library window: the search field over the grid, the search results, or a word on why
/// there is neither.
class LibraryView : public QWidget
{
    Q_OBJECT

public:
    LibraryView(LibraryViewModel &vm, CoverCache &covers, const OpenReaderWindow &openWindow,
                QWidget *parent = nullptr);

    /// Of the papers, and of the search results.
    QList<PaperGrid *> grids() const;
    void focusContent(); ///< gives the cards that are shown the keyboard focus

protected:
    void keyPressEvent(QKeyEvent *event) override; ///< Escape leaves the search from its results as well

private:
    void layOut();
    void observe();
    void showContent();

    LibraryViewModel &m_vm;
    SearchField *m_searchField;
    QStackedWidget *m_content;
    LibraryGrid *m_grid;
    SearchResultsView *m_results;
    EmptyState *m_emptyState;
    std::vector<QPropertyNotifier> m_observers;
};
