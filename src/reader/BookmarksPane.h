#pragma once

#include "reader/ListOrHint.h"

#include <QProperty>
#include <vector>

class PDFViewerController;
class PassageList;

/// The paper's bookmarks: a click or Return opens one, Delete and the context menu delete one.
class BookmarksPane : public ListOrHint
{
    Q_OBJECT

public:
    /// `controller` must outlive the pane.
    explicit BookmarksPane(PDFViewerController &controller, QWidget *parent = nullptr);

private:
    BookmarksPane(PDFViewerController &controller, PassageList *list, QWidget *parent);
    void showBookmarks();
    void open(int index);
    void remove(int index);

    PDFViewerController &m_controller;
    PassageList *m_list;
    std::vector<QPropertyNotifier> m_observers;
};
