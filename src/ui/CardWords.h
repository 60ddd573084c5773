#pragma once

#include "search/SnippetMarkup.h"

#include <QList>
#include <QString>

struct Paper;
struct PaperCard;

// The words on a card, before anything is laid out.

bool isCurrentlyReading(const Paper &paper);

/// The passage of a search result as it is shown: matches told apart, and the beginning left out where it
/// would keep the first match out of sight. `query` is what the person typed. One span at least.
QList<SnippetSpan> passageSpans(const QString &snippet, const QString &query);

/// Where a passage stands and how many others the paper has: "Page 12 · 3 more passages".
QString passagePlace(const PaperCard &card);

/// What a screen reader says of a card, most telling first. Whether the file is there is not among it: see
/// `spokenFileMissing`.
QString spokenCard(const PaperCard &card);

/// Said after the rest of a card whose PDF is no longer at its path.
QString spokenFileMissing();
