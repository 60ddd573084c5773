#pragma once

#include "app/LibraryViewModel.h"
#include "reader/PDFOpenRequest.h"

#include <QScrollArea>

class BookmarkEvents;
class BookmarkRow;
class QVBoxLayout;
class WrappedLabel;

/// The bookmarks of one paper, kept current while reader windows add and remove some.
class BookmarksTab : public QScrollArea
{
    Q_OBJECT

public:
    /// All must outlive the tab.
    BookmarksTab(LibraryViewModel &vm, BookmarkEvents &events, OpenReaderWindow openWindow,
                 QWidget *parent = nullptr);

    /// Lists the bookmarks of `paper`, at once when the tab shows, else when it first does.
    void setPaper(const Paper &paper);

protected:
    void showEvent(QShowEvent *event) override;

private:
    void load();
    void loadAfterChange();
    void showBookmarks();
    int takeRows();
    BookmarkRow *makeRow(const Bookmark &bookmark);

    LibraryViewModel &m_vm;
    BookmarkEvents &m_events;
    OpenReaderWindow m_openWindow;
    Paper m_paper;
    bool m_isLoaded = false; ///< the paper's bookmarks have been asked for
    WrappedLabel *m_empty;
    QVBoxLayout *m_rows;
    std::vector<QPropertyNotifier> m_observers;
};
