#pragma once

#include "searchprovider/RunnerMatch.h"

#include <QDBusAbstractAdaptor>

class SearchProvider;

/// Answers KRunner, whose interface this is; names and arguments are the desktop's.
class RunnerSearchProvider : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.krunner1")

public:
    /// Of fewer letters there are too many papers to be worth a row among programs and settings.
    static constexpr int kFewestLetters = 3;

    explicit RunnerSearchProvider(SearchProvider &provider);

public Q_SLOTS:
    RunnerActions Actions();
    QVariantMap Config();
    RunnerMatches Match(const QString &query);
    void Run(const QString &matchId, const QString &actionId);
    /// Comes before `Run`, from a KRunner on Wayland.
    void SetActivationToken(const QString &token);
    void Teardown();

private:
    SearchProvider &m_provider;
    QString m_activationToken;
};
