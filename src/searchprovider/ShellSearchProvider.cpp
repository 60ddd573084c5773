#include "searchprovider/ShellSearchProvider.h"

#include "platform/ApplicationInterface.h"
#include "searchprovider/SearchProvider.h"
#include "searchprovider/ShownPaper.h"

#include <QDBusMetaType>

namespace
{

/// The shell tells when the person clicked. In a startup id, after "_TIME", it is what X11's window managers
/// go by; 0 stands for an unknown time.
QVariantMap platformDataOf(uint timestamp)
{
    if (timestamp == 0)
        return {};
    return {{QLatin1String(kStartupIdKey),
             QStringLiteral("quirevault-search-provider-%1_TIME%1").arg(timestamp)}};
}

} // namespace

ShellSearchProvider::ShellSearchProvider(SearchProvider &provider)
    : QDBusAbstractAdaptor(&provider)
    , m_provider(provider)
{
    qDBusRegisterMetaType<QList<QVariantMap>>();
}

QStringList ShellSearchProvider::GetInitialResultSet(const QStringList &terms)
{
    return m_provider.find(terms);
}

QStringList ShellSearchProvider::GetSubsearchResultSet(const QStringList &, const QStringList &terms)
{
    // Not among the earlier results: those are the first few of what may have been thousands.
    return m_provider.find(terms);
}

QList<QVariantMap> ShellSearchProvider::GetResultMetas(const QStringList &identifiers)
{
    QList<QVariantMap> metas;
    for (const FoundPaper &paper : m_provider.papers(identifiers)) {
        metas.append({{QStringLiteral("id"), paper.id},
                      {QStringLiteral("name"), shownTitle(paper)},
                      {QStringLiteral("description"), shownDetails(paper)},
                      {QStringLiteral("gicon"), m_provider.icon(paper)}});
    }
    return metas;
}

void ShellSearchProvider::ActivateResult(const QString &identifier, const QStringList &, uint timestamp)
{
    m_provider.open(identifier, platformDataOf(timestamp));
}

void ShellSearchProvider::LaunchSearch(const QStringList &terms, uint timestamp)
{
    m_provider.showAll(terms, platformDataOf(timestamp));
}
