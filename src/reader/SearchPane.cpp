#include "reader/SearchPane.h"

#include "reader/PDFViewerController.h"
#include "reader/PassageList.h"

SearchPane::SearchPane(PDFViewerController &controller, QWidget *parent)
    : SearchPane(controller, new PassageList, parent)
{
}

SearchPane::SearchPane(PDFViewerController &controller, PassageList *hits, QWidget *parent)
    : ListOrHint(hits, parent)
    , m_controller(controller)
    , m_hits(hits)
{
    setObjectName(QStringLiteral("searchPane"));
    m_hits->setObjectName(QStringLiteral("hits"));
    m_hits->setAccessibleName(QStringLiteral("Search hits"));
    connect(m_hits, &PassageList::opened, &m_controller, &PDFViewerController::goToHit);
    m_observers.push_back(m_controller.searchResults.addNotifier([this] { showHits(); }));
    m_observers.push_back(
        m_controller.currentHit.addNotifier([this] { m_hits->setCurrent(m_controller.currentHit); }));
    m_observers.push_back(m_controller.isSearching.addNotifier([this] { setHint(whyEmpty()); }));
    m_observers.push_back(m_controller.isInLibrary.addNotifier([this] { setHint(whyEmpty()); }));
    m_observers.push_back(m_controller.searchText.addNotifier([this] { setHint(whyEmpty()); }));
    showHits();
}

void SearchPane::showHits()
{
    const QString query = m_controller.searchText;
    QList<PassageRow> rows;
    for (const PDFSearchResult &hit : m_controller.searchResults.value())
        rows.append({.title = {},
                     .text = markUpSnippet(hit.snippet, query),
                     .place = u"Page " + QString::number(hit.pageIndex + 1)});
    m_hits->setRows(rows);
    m_hits->setCurrent(m_controller.currentHit);
    setHint(whyEmpty());
}

QString SearchPane::whyEmpty() const
{
    if (!m_controller.searchResults.value().isEmpty())
        return {};
    if (!m_controller.isInLibrary)
        return QStringLiteral("Only papers of the library can be searched.");
    if (m_controller.searchText.value().isEmpty())
        return QStringLiteral("Type into the search field to search this paper.");
    return m_controller.isSearching ? QStringLiteral("Searching…") : QStringLiteral("Nothing found");
}
