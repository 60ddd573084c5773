#pragma once

#include "reader/PDFOpenRequest.h"

#include <QProperty>
#include <QWidget>
#include <vector>

class CoverCache;
class EmptyState;
class LibraryGrid;
class LibraryViewModel;
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

    LibraryGrid *grid() const { return m_grid; }
    SearchResultsView *results() const { return m_results; }
    void focusContent(); ///< gives the cards that are shown the keyboard focus

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
