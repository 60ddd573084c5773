#include "searchprovider/SearchProviderProgram.h"

#include "base/Clock.h"
#include "base/Log.h"
#include "platform/ApplicationInterface.h"
#include "platform/Paths.h"
#include "searchprovider/RunnerSearchProvider.h"
#include "searchprovider/SearchProvider.h"
#include "searchprovider/ShellSearchProvider.h"

#include <QCoreApplication>
#include <QDBusError>

namespace
{

/// Puts the provider on the bus. The object before the name: whoever finds the name may call at once.
bool appear(QDBusConnection bus, SearchProvider &provider)
{
    return bus.registerObject(QLatin1String(kSearchProviderPath), &provider) &&
           bus.registerService(QLatin1String(kSearchProviderName));
}

} // namespace

int runSearchProvider(int argc, char **argv)
{
    setLogTarget(LogTarget::StandardError);
    const QCoreApplication program(argc, argv);
    const QDBusConnection bus = QDBusConnection::sessionBus();
    const SystemClock clock;
    ApplicationCaller application(bus, applicationBusName(dataFolder()),
                                  companionProgram(QStringLiteral("quirevault-desktop")));
    SearchProvider provider({.itemsPath = systemSearchPath(),
                             .coversFolder = coversFolder(),
                             .clock = clock,
                             .application = application,
                             .end = [] {
                                 QCoreApplication::quit();
                             }});
    new ShellSearchProvider(provider);
    new RunnerSearchProvider(provider);
    if (!appear(bus, provider)) {
        logLine(QStringLiteral("quirevault-search-provider: it cannot be reached: ") +
                bus.lastError().message());
        return 1;
    }
    return QCoreApplication::exec();
}
