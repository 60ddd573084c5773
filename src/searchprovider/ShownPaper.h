#pragma once

#include "systemsearch/ItemSearch.h"

#include <QString>

// How a paper that was found is shown by the desktop: short, on one line, whatever a document calls itself.

/// In characters. Chosen: longer than any desktop's row.
inline constexpr qsizetype kLongestShown = 200;

QString shownTitle(const FoundPaper &paper);
/// "authors · year", or the one of them that is known.
QString shownDetails(const FoundPaper &paper);
