#include "searchprovider/SearchProvider.h"

#include "platform/ApplicationInterface.h"

#include <QFile>

SearchProvider::SearchProvider(const Collaborators &collaborators)
    : m_search(collaborators.itemsPath)
    , m_coversFolder(collaborators.coversFolder)
    , m_application(collaborators.application)
    , m_idleEnd(collaborators.clock, collaborators.end)
{
}

QStringList SearchProvider::find(const QStringList &terms)
{
    m_idleEnd.used();
    return m_search.find(terms);
}

QList<FoundPaper> SearchProvider::papers(const QStringList &ids)
{
    m_idleEnd.used();
    return m_search.papers(ids.first(std::min(ids.size(), kMostAskedFor)));
}

QString SearchProvider::icon(const FoundPaper &paper) const
{
    const QString cover = m_coversFolder + u'/' + paper.id + u".jpg";
    return QFile::exists(cover) ? cover : QStringLiteral("application-pdf");
}

void SearchProvider::open(const QString &id, const QVariantMap &platformData)
{
    m_idleEnd.used();
    m_application.activateAction(QLatin1String(kOpenPaperAction), id.left(kLongestText), platformData);
}

void SearchProvider::showAll(const QStringList &terms, const QVariantMap &platformData)
{
    m_idleEnd.used();
    m_application.activateAction(QLatin1String(kSearchAction), terms.join(u' ').left(kLongestText),
                                 platformData);
}
