#pragma once

#include <QString>
#include <memory>

class DatabaseManager;
class ImportFlow;
class NativeLibraryService;
class NativeSearchService;
class PDFIndexer;
class Preferences;
class RetagFlow;
class SystemSearchPublisher;

/// Where one set of services keeps its library.
struct ServiceLocations {
    QString libraryDatabase;
    QString covers;

    /// The library of the user who runs the program.
    static ServiceLocations ofTheUser();
};

/// The one set of long-lived services that a process uses, each built on first use with the collaborators
/// that it needs; whoever owns this owns them all. Ask for services from one thread; what they allow to
/// other threads, their own headers say.
class Services
{
public:
    explicit Services(ServiceLocations locations);
    ~Services();

    DatabaseManager &db();
    NativeLibraryService &library();
    NativeSearchService &search();
    PDFIndexer &indexer();
    ImportFlow &importFlow();
    RetagFlow &retagFlow();
    SystemSearchPublisher &systemSearch();
    Preferences &preferences();

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};
