#pragma once

#include "app/LibraryViewModel.h"
#include "reader/PDFOpenRequest.h"

#include <QStackedWidget>

class BookmarkEvents;
class BookmarksTab;
class Clock;
class CoverCache;
class DetailsView;
class FileOpener;
class QTabWidget;

/// Shows the selected paper beside the grid, and edits it; a tab lists its bookmarks.
class PaperDetailPanel : public QStackedWidget
{
    Q_OBJECT

public:
    /// What the panel uses besides the library. All must outlive it.
    struct Surroundings {
        FileOpener &files;
        const Clock &clock;
        BookmarkEvents &bookmarkEvents;

        static Surroundings ofTheProcess();
    };
    PaperDetailPanel(LibraryViewModel &vm, CoverCache &covers, OpenReaderWindow openWindow,
                     QWidget *parent = nullptr, Surroundings with = Surroundings::ofTheProcess());

    void beginEditing();  ///< of title, authors and year; does nothing without a paper
    void focusTagField(); ///< likewise

private:
    void showSelectedPaper();

    LibraryViewModel &m_vm;
    DetailsView *m_details;
    BookmarksTab *m_bookmarks;
    QTabWidget *m_tabs;
    QPropertyNotifier m_paperObserver;
};
