#include "app/AppDelegate.h"

#include "app/SessionManager.h"

#include <utility>

AppDelegate::AppDelegate(SessionManager &sessions, Updater::Collaborators updates)
    : m_sessions(sessions)
    , m_updates(std::move(updates))
{
}

void AppDelegate::applicationDidFinishLaunching()
{
    m_updater = std::make_unique<Updater>(m_updates);
}

void AppDelegate::applicationWillTerminate()
{
    m_sessions.saveNow();
}

bool AppDelegate::applicationShouldHandleReopen(bool) const
{
    return true;
}
