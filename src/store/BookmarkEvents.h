#pragma once

#include <QObject>
#include <QProperty>
#include <QString>
#include <QUuid>
#include <optional>

/// Tells the views that list a paper's bookmarks to list them again.
///
/// Belongs to one thread, the one that made it (the main thread): reading and observing `lastChange` happens
/// there. `post` may be called from any thread.
class BookmarkEvents : public QObject
{
public:
    struct Change {
        QString paperId; ///< the paper whose bookmarks changed
        QUuid id;        ///< fresh for every change, so that two changes are never equal

        friend bool operator==(const Change &, const Change &) = default;
    };

    /// The process's one instance. The first call must come from the main thread.
    static BookmarkEvents &shared();

    /// The latest change; absent until there is one.
    std::optional<Change> lastChange() const { return m_lastChange.value(); }
    QBindable<std::optional<Change>> bindableLastChange() { return &m_lastChange; }

    /// Sets `lastChange` to a new change of the paper: at once when called on this object's thread, else
    /// when that thread's event loop comes to it.
    void post(const QString &paperId);

private:
    QProperty<std::optional<Change>> m_lastChange;
};
