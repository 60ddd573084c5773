#pragma once

#include <QString>
#include <memory>

class Clock;
class DatabaseManager;
class HttpClient;
class ImportFlow;
class NativeLibraryService;
class NativeSearchService;
class Preferences;
class RetagFlow;
class SystemSearchPublisher;

/// Where one set of services keeps its library.
struct ServiceLocations {
    QString libraryDatabase;
    QString covers;
    QString systemSearch = {}; ///< the index for the desktop's search; none when empty

    /// The library of the user who runs the program.
    static ServiceLocations ofTheUser();
};

/// The composition root: builds the one set of long-lived services that a process uses, each with the
/// collaborators that it needs, and owns them. Building it starts the database thread and costs nothing
/// else. From which threads a service may be called, its own header says.
class Services
{
public:
    explicit Services(const ServiceLocations &locations);
    ~Services();

    DatabaseManager &db();
    NativeLibraryService &library();
    NativeSearchService &search();
    ImportFlow &importFlow();
    RetagFlow &retagFlow();
    Preferences &preferences();
    const Clock &clock();
    SystemSearchPublisher &publisher();
    HttpClient &http();

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};
