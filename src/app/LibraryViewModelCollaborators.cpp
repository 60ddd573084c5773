// In a file of its own: the command line has the services and no view model.
#include "app/LibraryViewModel.h"
#include "app/Services.h"
#include "search/NativeSearchService.h"

LibraryViewModel::Collaborators LibraryViewModel::Collaborators::of(Services &services)
{
    return {.db = services.db(),
            .library = services.library(),
            .publisher = services.publisher(),
            .preferences = services.preferences(),
            .clock = services.clock(),
            .importFlow = services.importFlow(),
            .retagFlow = services.retagFlow(),
            .search = [&services](const QString &query) {
                return services.search().search(query);
            }};
}
