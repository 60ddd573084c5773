#pragma once

#include "base/Result.h"
#include "platform/SystemSearchIndex.h"

#include <QStringList>
#include <stop_token>

class SideDatabase;

// What is written into an `ItemFile`. Each call is one transaction, or none when nothing changes: items that
// are there already, the same in every field, are not written again. A call that is stopped changes nothing
// and fails with `cancelledError`.

/// Adds items; one of the same identifier is replaced.
Result<void> putItems(SideDatabase &database, const QList<SearchableItem> &items, std::stop_token stop = {});
/// Makes `items` all that there is.
Result<void> replaceAllItems(SideDatabase &database, const QList<SearchableItem> &items,
                             std::stop_token stop = {});
Result<void> removeItems(SideDatabase &database, const QStringList &identifiers);
