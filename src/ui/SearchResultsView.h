#pragma once

#include "reader/PDFOpenRequest.h"
#include "store/SearchResult.h"
#include "ui/PaperListModel.h"

#include <QProperty>
#include <QWidget>

class CoverCache;
class EmptyState;
class LibraryViewModel;
class PaperGrid;
class QStackedLayout;

/// The results of a full-text search as cards with their passages; opening one opens the reader on it.
class SearchResultsView : public QWidget
{
    Q_OBJECT

public:
    SearchResultsView(LibraryViewModel &vm, CoverCache &covers, OpenReaderWindow openWindow,
                      QWidget *parent = nullptr);

    PaperGrid *cards() const { return m_grid; }

private:
    void addPages();
    void forwardInput(OpenReaderWindow openWindow);
    void observe();
    void showState();
    void showResults();
    void showSelection();

    LibraryViewModel &m_vm;
    QStackedLayout *m_pages;
    QWidget *m_busy;
    QWidget *m_nothing;
    EmptyState *m_nothingFound;
    PaperGrid *m_grid;
    std::vector<QPropertyNotifier> m_observers;
};

/// What a result knows of its paper.
Paper paperIn(const SearchResult &result);

/// The card of a result: of the paper `listed`, or when that is null of what the result itself knows.
PaperCard cardForResult(const SearchResult &result, const Paper *listed);

/// The cards of all results, in their order; each takes its paper from `papers` when it is listed there.
QList<PaperCard> cardsForResults(const QList<SearchResult> &results, const QList<Paper> &papers);

/// What opening a result asks the reader for: the page and words of its best passage, or without one page 1
/// and `fullText`, the free text that was searched for.
PDFOpenRequest openRequestForResult(const SearchResult &result, const QString &fullText);
