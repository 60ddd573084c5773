#pragma once

#include "base/Clock.h"
#include "reader/PDFOpenRequest.h"

#include <QList>
#include <QProperty>
#include <QString>
#include <chrono>
#include <memory>

/// How long changes are gathered before the session is written. Chosen: turning pages while reading costs one
/// write, not one a page.
inline constexpr std::chrono::seconds kSessionSaveDelay{2};

/// Remembers which reader windows are open, so that the next start can open them again. Each window tells
/// here when it opens, changes and closes. Main thread.
class SessionManager
{
public:
    /// Reads `sessionFile`, a JSON array of requests, making its folder when there is none. What cannot be
    /// read is logged: of a broken file everything is lost, of a broken request only itself. `clock` must
    /// outlive the manager.
    SessionManager(const QString &sessionFile, const Clock &clock);

    const QString sessionFile;
    /// The requests of the open windows in the order of their registration; before any window has opened,
    /// those that the file held.
    QProperty<QList<PDFOpenRequest>> activeSessions;

    // Each of these writes the file two seconds after the last of them.
    void registerRequest(const PDFOpenRequest &request); ///< unless one of the same id is listed
    void update(const PDFOpenRequest &request);          ///< replaces the one of the same id, or adds it
    void unregister(const QUuid &id);

    /// Writes the file without waiting, in place. A failure is logged.
    void saveNow();

private:
    void scheduleSave();

    const Clock &m_clock;
    std::unique_ptr<PendingCall> m_saveTask;
};
