#include "app/Services.h"

#include "app/ImportFlow.h"
#include "app/RetagFlow.h"
#include "base/Clock.h"
#include "indexing/CoreSpotlightIndexer.h"
#include "indexing/CoverStore.h"
#include "indexing/OpenLibraryBookService.h"
#include "indexing/PDFIndexer.h"
#include "indexing/TopicTagger.h"
#include "pdf/EngineDocument.h"
#include "platform/CurlHttpClient.h"
#include "platform/Paths.h"
#include "platform/Preferences.h"
#include "platform/SystemSearchIndex.h"
#include "search/NativeSearchService.h"
#include "store/DatabaseManager.h"
#include "store/NativeLibraryService.h"
#include "systemsearch/FileSearchIndex.h"

ServiceLocations ServiceLocations::ofTheUser()
{
    return {.libraryDatabase = libraryDatabasePath(),
            .covers = coversFolder(),
            .systemSearch = systemSearchPath()};
}

namespace
{

std::unique_ptr<SystemSearchIndex> systemSearchIndex(const QString &path)
{
    if (path.isEmpty())
        return std::make_unique<NullSystemSearchIndex>();
    return std::make_unique<FileSearchIndex>(path);
}

} // namespace

/// The services in the order in which they need each other; they die the other way round.
struct Services::Parts {
    explicit Parts(const ServiceLocations &locations)
        : systemIndex(systemSearchIndex(locations.systemSearch))
        , db(locations.libraryDatabase)
        , covers(locations.covers)
    {
    }

    SystemClock clock;
    Preferences preferences;
    std::unique_ptr<SystemSearchIndex> systemIndex;
    CoreSpotlightIndexer systemSearch{*systemIndex};
    DatabaseManager db;
    NativeLibraryService library{db, systemSearch};
    /// The same library for imports, whose look-ups and writes may not stand before a search.
    NativeLibraryService importedLibrary{db, systemSearch, BookmarkEvents::shared(), Urgency::Background};
    NativeSearchService search{db};
    CurlHttpClient http;
    OpenLibraryBookService books{http, OpenLibraryBookService::configuredAddress()};
    CoverStore covers;
    PDFIndexer indexer{{.db = db,
                        .library = importedLibrary,
                        .books = books,
                        .covers = covers,
                        .clock = clock,
                        .openPDF = engineOpener()}};
    TopicTagger tagger{books, engineOpener()};
    ImportFlow importFlow{
        [this](const QString &path, std::stop_token stop) { return indexer.indexFile(path, stop); },
        preferences, clock};
    RetagFlow retagFlow{{.db = db,
                         .library = library,
                         .publisher = systemSearch,
                         .retagPaper = [this](const Paper &paper, std::stop_token stop) {
                             return tagger.retagPaper(paper, stop);
                         }}};
};

Services::Services(const ServiceLocations &locations)
    : m_parts(std::make_unique<Parts>(locations))
{
}

Services::~Services() = default;

DatabaseManager &Services::db()
{
    return m_parts->db;
}

NativeLibraryService &Services::library()
{
    return m_parts->library;
}

NativeSearchService &Services::search()
{
    return m_parts->search;
}

ImportFlow &Services::importFlow()
{
    return m_parts->importFlow;
}

RetagFlow &Services::retagFlow()
{
    return m_parts->retagFlow;
}

Preferences &Services::preferences()
{
    return m_parts->preferences;
}

const Clock &Services::clock()
{
    return m_parts->clock;
}

SystemSearchPublisher &Services::publisher()
{
    return m_parts->systemSearch;
}

HttpClient &Services::http()
{
    return m_parts->http;
}
