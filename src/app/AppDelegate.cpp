#include "app/AppDelegate.h"

#include "app/SessionManager.h"

#include <utility>

AppDelegate::AppDelegate(SessionManager &sessions, Updater::ShowResult showUpdateResult)
    : m_sessions(sessions)
    , m_showUpdateResult(std::move(showUpdateResult))
{
}

void AppDelegate::applicationDidFinishLaunching()
{
    m_updater = std::make_unique<Updater>(m_showUpdateResult);
}

void AppDelegate::applicationWillTerminate()
{
    m_sessions.saveNow();
}

bool AppDelegate::applicationShouldHandleReopen(bool) const
{
    return true;
}
