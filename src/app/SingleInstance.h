#pragma once

#include "reader/PDFOpenRequest.h"

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QList>
#include <QObject>
#include <QStringList>
#include <QUrl>
#include <QVariantMap>
#include <functional>

/// What lets a program that was just started put a window before those of others: the desktop hands it to
/// the program, and it is passed on to the one whose window it is to be.
struct ActivationToken {
    QString wayland; ///< of the xdg-activation protocol
    QString x11;     ///< a startup notification id

    /// Takes the token that this process was started with. Call before a QGuiApplication is made, which
    /// takes it for the process's own windows.
    static ActivationToken ofThisProcess();
    /// Makes Qt use the token for the next window that asks to come forward.
    void use() const;
};

/// Keeps a library to one running program: the first start takes a name on the session bus, a later one asks
/// the first to come forward instead. What others may ask of it is the desktop's common interface for
/// applications. Main thread.
class SingleInstance : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    /// What the other starts, and other programs, ask for. The activation token is in use by then.
    struct Handlers {
        std::function<void()> activate;
        std::function<void(const QList<QUrl> &files)> open;
        std::function<void(const PDFOpenRequest &request)> openReader;
        std::function<bool(const QString &name)> runCommand; ///< false when there is no such command
        std::function<void(const QString &paperId)> openPaper = {};
        std::function<void(const QString &text)> search = {};
    };
    enum class Start {
        First,      ///< this program is the one, or there is no bus to find others on
        HandedOver, ///< another one runs already and did what was asked
        NoAnswer,   ///< another one runs already and does not answer
    };

    /// Well-known name for the library in `dataFolder`: one for the user's default library, others for
    /// libraries elsewhere, so that two libraries can be open side by side.
    static QString nameFor(const QString &dataFolder);

    SingleInstance(const QDBusConnection &bus, const QString &name);
    /// Gives the name back.
    ~SingleInstance() override;

    /// Takes the name, or asks the program that has it, with `token`, to open reader windows for `requests`
    /// or else to come forward, and waits for its answer.
    Start start(const ActivationToken &token, const QList<PDFOpenRequest> &requests = {});
    /// The same for a program that the bus started to answer a call: it takes the name that the bus waits for
    /// as well, whatever its library is called. One that runs already is asked to come forward, unless the
    /// bus will hand the call to it anyway.
    Start startService();
    /// Lets a later start be the one; this program's last windows are closed.
    void giveNameBack();
    /// To be set before the event loop runs: what others ask waits until then.
    void setHandlers(Handlers handlers);

public Q_SLOTS:
    // The interface, under the object path /org/quirevault/Quirevault; names and arguments are the desktop's.
    // The actions that take a text are named in platform/ApplicationInterface.h; the others are commands.
    Q_SCRIPTABLE void Activate(const QVariantMap &platformData);
    Q_SCRIPTABLE void Open(const QStringList &uris, const QVariantMap &platformData);
    Q_SCRIPTABLE void ActivateAction(const QString &name, const QVariantList &parameter,
                                     const QVariantMap &platformData);

private:
    /// The answer, or the first that is a refusal.
    QDBusMessage handOver(const ActivationToken &token, const QList<PDFOpenRequest> &requests);
    QDBusMessage call(const QString &method, const QVariantList &arguments);
    void registerObject();
    bool runTextAction(const QString &name, const QString &text);
    void openReader(const QString &json);

    QDBusConnection m_bus;
    QString m_name;
    bool m_hasName = false;
    bool m_hasApplicationName = false; ///< besides `m_name`, when that is another one
    Handlers m_handlers;
};
