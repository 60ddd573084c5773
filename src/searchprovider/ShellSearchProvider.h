#pragma once

#include <QDBusAbstractAdaptor>
#include <QList>
#include <QStringList>
#include <QVariantMap>

class SearchProvider;

/// Answers the search of GNOME's overview, whose interface this is; names and arguments are the desktop's.
class ShellSearchProvider : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.gnome.Shell.SearchProvider2")

public:
    explicit ShellSearchProvider(SearchProvider &provider);

public Q_SLOTS:
    QStringList GetInitialResultSet(const QStringList &terms);
    QStringList GetSubsearchResultSet(const QStringList &previousResults, const QStringList &terms);
    QList<QVariantMap> GetResultMetas(const QStringList &identifiers);
    void ActivateResult(const QString &identifier, const QStringList &terms, uint timestamp);
    void LaunchSearch(const QStringList &terms, uint timestamp);

private:
    SearchProvider &m_provider;
};
