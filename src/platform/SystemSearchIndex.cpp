#include "platform/SystemSearchIndex.h"

void NullSystemSearchIndex::indexItems(const QList<SearchableItem> &, Completion completion)
{
    completion(std::nullopt);
}

void NullSystemSearchIndex::replaceItems(const QList<SearchableItem> &, Completion completion)
{
    completion(std::nullopt);
}

void NullSystemSearchIndex::deleteItems(const QStringList &, Completion completion)
{
    completion(std::nullopt);
}
