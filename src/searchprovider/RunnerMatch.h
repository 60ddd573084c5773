#pragma once

#include <QDBusArgument>
#include <QList>
#include <QString>
#include <QVariantMap>

/// One answer to KRunner, in the order of its interface: "(sssida{sv})".
struct RunnerMatch {
    QString id;
    QString text;
    QString iconName; ///< of the theme, or a file
    int type = 0;
    double relevance = 0; ///< from 0 to 1
    QVariantMap properties;
};
using RunnerMatches = QList<RunnerMatch>;

/// One more thing that can be done with a match: "(sss)".
struct RunnerAction {
    QString id;
    QString text;
    QString iconName;
};
using RunnerActions = QList<RunnerAction>;

QDBusArgument &operator<<(QDBusArgument &argument, const RunnerMatch &match);
const QDBusArgument &operator>>(const QDBusArgument &argument, RunnerMatch &match);
QDBusArgument &operator<<(QDBusArgument &argument, const RunnerAction &action);
const QDBusArgument &operator>>(const QDBusArgument &argument, RunnerAction &action);

/// Makes the bus know these types.
void registerRunnerTypes();

Q_DECLARE_METATYPE(RunnerMatch)
Q_DECLARE_METATYPE(RunnerAction)
