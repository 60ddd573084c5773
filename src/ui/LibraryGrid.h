#pragma once

#include "app/SidebarItem.h"
#include "reader/PDFOpenRequest.h"
#include "search/ParsedQuery.h"
#include "store/Paper.h"

#include <QProperty>
#include <QWidget>

class CoverCache;
class LibraryViewModel;
class PaperGrid;

/// The papers of the sidebar's selection as cards, narrowed by the query's field filters.
class LibraryGrid : public QWidget
{
    Q_OBJECT

public:
    LibraryGrid(LibraryViewModel &vm, CoverCache &covers, OpenReaderWindow openWindow,
                QWidget *parent = nullptr);

    PaperGrid *cards() const { return m_grid; }

private:
    /// What the list stands for: another beginning means another list, shown from its top.
    struct Subject {
        SidebarItem item;
        ParsedQuery filters;

        friend bool operator==(const Subject &, const Subject &) = default;
    };

    void showPapers();
    void showSelection();
    void scrollToWanted();

    LibraryViewModel &m_vm;
    PaperGrid *m_grid;
    Subject m_shown;
    std::vector<QPropertyNotifier> m_observers;
};

/// What opening a paper from the library asks the reader for: its first or last read page is the reader's
/// business.
PDFOpenRequest openRequestForPaper(const Paper &paper);
