#include "cli/PaperPublishing.h"

#include "app/Services.h"
#include "store/NativeLibraryService.h"
#include "store/SystemSearchPublisher.h"

void publishPapers(const QStringList &ids, const CommandContext &context)
{
    if (ids.isEmpty())
        return;
    if (const Result<QList<Paper>> papers = context.services.library().papersByIds(ids).result())
        context.services.publisher().publish(*papers);
}
