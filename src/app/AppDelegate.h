#pragma once

#include "app/Updater.h"

#include <memory>

class SessionManager;

/// What happens at the beginning and at the end of the program. Main thread.
class AppDelegate
{
public:
    /// `sessions` must outlive the delegate.
    AppDelegate(SessionManager &sessions, Updater::Collaborators updates);

    /// Starts the updater.
    void applicationDidFinishLaunching();
    /// Saves at once which reader windows are open.
    void applicationWillTerminate();
    /// Whether asking for the program again may open a library window: always.
    bool applicationShouldHandleReopen(bool hasVisibleWindows) const;

    /// Null until the application has launched.
    Updater *updater() const { return m_updater.get(); }

private:
    SessionManager &m_sessions;
    Updater::Collaborators m_updates;
    std::unique_ptr<Updater> m_updater;
};
