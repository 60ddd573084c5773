#include "reader/ReaderSidebar.h"

#include "reader/BookmarksPane.h"
#include "reader/OutlinePane.h"
#include "reader/SearchPane.h"

#include <QTabBar>

ReaderSidebar::ReaderSidebar(PDFViewerController &controller, PDFView &view, QWidget *parent)
    : QTabWidget(parent)
{
    setObjectName(QStringLiteral("readerSidebar"));
    setAccessibleName(QStringLiteral("Sidebar"));
    setDocumentMode(true);
    tabBar()->setExpanding(true);
    setUsesScrollButtons(false); // in a narrow sidebar names are cut, and all three stay within reach
    setElideMode(Qt::ElideRight);
    // In the order of `Pane`.
    addTab(new OutlinePane(controller, view, this), QStringLiteral("Outline"));
    addTab(new SearchPane(controller, this), QStringLiteral("Search"));
    addTab(new BookmarksPane(controller, this), QStringLiteral("Bookmarks"));
}
