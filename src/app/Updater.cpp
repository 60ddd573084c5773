#include "app/Updater.h"

#include <utility>

Updater::Updater(ShowResult showResult)
    : m_showResult(std::move(showResult))
{
}

void Updater::checkForUpdates()
{
    m_showResult(QStringLiteral("No update service is configured."));
}
