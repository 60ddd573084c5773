#include "desktop/DesktopProgram.h"

#include "app/DesktopFileOpener.h"
#include "app/LibraryViewModel.h"
#include "app/OpenRequestArguments.h"
#include "app/ProgramInformation.h"
#include "app/QuirevaultApp.h"
#include "app/RestoreGuard.h"
#include "app/Services.h"
#include "app/SessionManager.h"
#include "desktop/DocumentAhead.h"
#include "desktop/ServiceStart.h"
#include "desktop/Windows.h"
#include "platform/ApplicationInterface.h"
#include "platform/Paths.h"
#include "reader/ReaderServices.h"
#include "search/NativeSearchService.h"
#include "store/BookmarkEvents.h"
#include "store/NativeLibraryService.h"
#include "ui/AboutPanel.h"
#include "ui/ContentView.h"
#include "ui/CoverCache.h"

#include <QDBusConnection>
#include <algorithm>
#include <cstdio>
#include <fontconfig/fontconfig.h>
#include <thread>
#include <unistd.h>
#include <utility>

namespace
{

/// While the application is made: Qt ends the process when it finds no display, in words for developers.
void explainMissingDisplay(QtMsgType type, const QMessageLogContext &, const QString &)
{
    if (type != QtFatalMsg)
        return;
    std::fputs(
        "quirevault: there is no display to open the library window on. Start it in a desktop session, "
        "or set WAYLAND_DISPLAY or DISPLAY. The commands work without: see quirevault --help\n",
        stderr);
    _exit(1);
}

std::unique_ptr<QApplication> makeApplication(int &argc, char **argv)
{
    // What tells of the installed fonts is read before the first text is shown, and takes as long as it takes
    // to connect to the display.
    const std::jthread fonts([] { FcInit(); });
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Quirevault"));
    QGuiApplication::setDesktopFileName(QStringLiteral("org.quirevault.Quirevault"));
    const QtMessageHandler before = qInstallMessageHandler(explainMissingDisplay);
    auto application = std::make_unique<QApplication>(argc, argv);
    qInstallMessageHandler(before);
    return application;
}

/// Of packages, each in the program for its kind.
DesktopFileOpener::Desktop openerOfPackages()
{
    DesktopFileOpener::Desktop desktop = DesktopFileOpener::Desktop::ofTheUser();
    desktop.fileType.clear();
    return desktop;
}

/// Everything that lives as long as the program runs, in the order in which it needs each other.
struct Parts {
    explicit Parts(const QList<PDFOpenRequest> &requests)
        : ahead(requests)
    {
    }

    OpenedWindow makeLibraryWindow(QuirevaultApp &application)
    {
        // Before the window is made, so that the database reads while it is.
        if (!std::exchange(hasLoadedLibrary, true)) {
            vm.loadPapers();
            vm.loadTags();
        }
        return showLibraryWindow(
            {.vm = vm,
             .commands = application.commands(),
             .covers = covers,
             .preferences = services.preferences(),
             .openWindow =
                 [&application](const PDFOpenRequest &request) { application.openReaderWindow(request); },
             .isQuitting =
                 [&application] {
                     return application.isQuitting();
                 }});
    }

    OpenedWindow makeReaderWindow(const PDFOpenRequest &request)
    {
        const ReaderServices readerServices{
            .library = services.library(),
            .bookmarkEvents = BookmarkEvents::shared(),
            .searchInPaper =
                [this](const QString &paperId, const QString &query) {
                    return services.search().searchInPaper(paperId, query);
                },
            .clock = services.clock(),
            .preferences = services.preferences(),
            .showLibrary = [this] { app.openLibraryWindow(); },
            .searchInLibrary = [this](const QString &text) { app.search(text); },
            .makeDocument =
                [this](const QString &path) {
                    return ahead.take(path);
                }};
        return showReaderWindow(request, readerServices, sessions, [this] { return app.isQuitting(); });
    }

    DocumentAhead ahead;
    bool hasLoadedLibrary = false;
    Services services{ServiceLocations::ofTheUser()};
    SessionManager sessions{sessionFilePath(), services.clock()};
    RestoreGuard restoreGuard{services.preferences(), services.clock()};
    LibraryViewModel vm{LibraryViewModel::Collaborators::of(services)};
    CoverCache covers;
    DesktopFileOpener packageOpener{openerOfPackages()};
    QuirevaultApp app{
        {.sessions = sessions,
         .restoreGuard = restoreGuard,
         .makeLibraryWindow = [this](QuirevaultApp &application) { return makeLibraryWindow(application); },
         .makeReaderWindow = [this](const PDFOpenRequest &request) { return makeReaderWindow(request); },
         .askToReopen = askToReopen,
         .showAbout = [] { showAboutPanel(QApplication::activeWindow()); },
         .updates = {.http = services.http(),
                     .preferences = services.preferences(),
                     .clock = services.clock(),
                     .opener = packageOpener,
                     .program = InstalledProgram::ofThisBuild(programVersion()),
                     .builtInFeed = builtInFeedAddress(),
                     .folder = downloadsFolder(),
                     .timeouts = {},
                     .showWindow = showUpdates},
         .findPaper = [this](const QString &id) { return services.library().paperById(id); },
         .searchLibrary = [this](const QString &text) { vm.queryText = text; },
         .showProblem =
             [this](const QString &message) {
                 vm.errorMessage = message;
             }}};
};

bool hasWindow()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    return std::any_of(windows.begin(), windows.end(),
                       [](const QWidget *window) { return window->isVisible(); });
}

int runLibrary(SingleInstance &instance, const QList<PDFOpenRequest> &requests, bool isService)
{
    Parts parts(requests);
    QuirevaultApp &app = parts.app;
    instance.setHandlers(
        {.activate = [&app] { app.reopen(); },
         .open = [&app](const QList<QUrl> &files) { app.openFiles(files); },
         .openReader = [&app](const PDFOpenRequest &request) { app.openReaderWindow(request); },
         .runCommand = [&app](const QString &name) { return app.runCommand(name); },
         .openPaper = [&app](const QString &paperId) { app.openPaper(paperId); },
         .search =
             [&app](const QString &text) {
                 app.search(text);
             }});
    std::unique_ptr<PendingCall> ending;
    if (isService) {
        app.startWithoutWindow();
        ending = endUnlessAWindowComes(parts.services.clock(), hasWindow, [] { QApplication::quit(); });
    } else {
        app.start(requests);
    }
    const int status = QApplication::exec();
    // Before the services end, which may wait for jobs: nobody would answer meanwhile.
    instance.giveNameBack();
    return status;
}

} // namespace

DesktopProgram::DesktopProgram(int &argc, char **argv)
    : m_activationToken(ActivationToken::ofThisProcess())
    , m_application(makeApplication(argc, argv))
    , m_isService(argc == 2 && qstrcmp(argv[1], kServiceOption) == 0)
    , m_requests(m_isService
                     ? QList<PDFOpenRequest>()
                     : openRequestsFromArguments(QByteArrayList(argv + std::min(argc, 1), argv + argc)))
{
}

int DesktopProgram::run()
{
    if (!m_requests) {
        std::fprintf(stderr, "quirevault: %s\n", m_requests.error().message().toUtf8().constData());
        return 2;
    }
    SingleInstance instance(QDBusConnection::sessionBus(), SingleInstance::nameFor(dataFolder()));
    switch (m_isService ? instance.startService() : instance.start(m_activationToken, *m_requests)) {
    case SingleInstance::Start::HandedOver:
        return 0;
    case SingleInstance::Start::NoAnswer:
        std::fputs("quirevault: it runs already, but does not answer\n", stderr);
        return 1;
    case SingleInstance::Start::First:
        break;
    }
    m_activationToken.use();
    return runLibrary(instance, *m_requests, m_isService);
}
