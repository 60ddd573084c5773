#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QList>
#include <QObject>
#include <QString>
#include <QVariantMap>

class QDBusPendingCallWatcher;
class QDBusServiceWatcher;

/// Asks the application for its actions over the bus, which starts it when it does not run. Where the bus
/// cannot, because the library lies elsewhere than usual or the application is not installed, its program is
/// started from here. Calls return at once; a failure is logged. Main thread.
class ApplicationCaller : public QObject
{
    Q_OBJECT

public:
    /// `name` is the application's on `bus`; `program` the path of its executable.
    ApplicationCaller(const QDBusConnection &bus, const QString &name, const QString &program);

    /// `text` is the action's parameter, `platformData` what lets its window come forward.
    void activateAction(const QString &action, const QString &text, const QVariantMap &platformData);

private:
    void call(const QDBusMessage &message);
    void answered(const QDBusMessage &message, QDBusPendingCallWatcher &watcher);
    void startAndCall(const QDBusMessage &message);
    void callWaiting();
    void giveUp();

    QDBusConnection m_bus;
    QString m_name;
    QString m_program;
    QDBusServiceWatcher *m_starting = nullptr; ///< while the program was started and has not taken its name
    QList<QDBusMessage> m_waiting;             ///< until then
};
