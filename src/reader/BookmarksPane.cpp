#include "reader/BookmarksPane.h"

#include "reader/PDFViewerController.h"
#include "reader/PassageList.h"

#include <QAction>

namespace
{
/// Of a bookmark in the list, which lays it out at each painting. Chosen: more than a row shows.
constexpr qsizetype kMostShownCharacters = 1000;
} // namespace

BookmarksPane::BookmarksPane(PDFViewerController &controller, QWidget *parent)
    : BookmarksPane(controller, new PassageList, parent)
{
}

BookmarksPane::BookmarksPane(PDFViewerController &controller, PassageList *list, QWidget *parent)
    : ListOrHint(list, parent)
    , m_controller(controller)
    , m_list(list)
{
    setObjectName(QStringLiteral("bookmarksPane"));
    m_list->setObjectName(QStringLiteral("bookmarks"));
    m_list->setAccessibleName(QStringLiteral("Bookmarks"));
    auto *deleteAction = new QAction(QStringLiteral("Delete"), m_list);
    deleteAction->setObjectName(QStringLiteral("deleteBookmark"));
    m_list->addAction(deleteAction);
    m_list->setContextMenuPolicy(Qt::ActionsContextMenu);
    connect(deleteAction, &QAction::triggered, this, [this] { remove(m_list->currentIndex().row()); });
    connect(m_list, &PassageList::deleteRequested, this, &BookmarksPane::remove);
    connect(m_list, &PassageList::opened, this, &BookmarksPane::open);
    m_observers.push_back(m_controller.bookmarks.addNotifier([this] { showBookmarks(); }));
    m_observers.push_back(m_controller.isInLibrary.addNotifier([this] { showBookmarks(); }));
    showBookmarks();
}

void BookmarksPane::showBookmarks()
{
    QList<PassageRow> rows;
    for (const Bookmark &bookmark : m_controller.bookmarks.value())
        rows.append({.title = bookmark.label,
                     .text = {{bookmark.text.left(kMostShownCharacters).simplified()}},
                     .isItalic = true,
                     .place = u"Page " + QString::number(bookmark.page)});
    m_list->setRows(rows);
    if (!rows.isEmpty())
        setHint({});
    else if (m_controller.isInLibrary)
        setHint(QStringLiteral("No bookmarks yet"));
    else
        setHint(QStringLiteral("Only papers of the library keep bookmarks."));
}

void BookmarksPane::open(int index)
{
    m_controller.goToBookmark(m_controller.bookmarks.value().at(index));
}

void BookmarksPane::remove(int index)
{
    if (index >= 0 && index < m_controller.bookmarks.value().size())
        m_controller.removeBookmark(m_controller.bookmarks.value().at(index).id);
}
