#pragma once

#include "cli/Command.h"

#include <QStringList>

/// Tells the desktop's search how these papers stand now; for commands that changed them past the store's own
/// announcements. A failure costs only that, until the library window is opened next.
void publishPapers(const QStringList &ids, const CommandContext &context);
