#pragma once

#include "cli/Output.h"
#include "store/Bookmark.h"
#include "store/Paper.h"
#include "store/Passage.h"

#include <QList>
#include <QString>
#include <optional>

// How papers and passages read in a terminal.

/// "1a2b3c4d  Title", then a line of authors and year when there are any.
void printPaper(const Paper &paper, const Output &output);
/// The same without the record, as a search result has it.
void printPaperHeading(const QString &id, const QString &title, const QString &authors,
                       std::optional<qint64> year, const Output &output);
/// "    p. 7  the passage", its matches emphasised and its cuts shown as "…".
/// `query` is what was searched for.
void printPassage(const Passage &passage, const QString &query, const Output &output);

/// "    1A2B3C4D  p. 7  label", and under it the bookmarked text on one line.
void printBookmark(const Bookmark &bookmark, const Output &output);

/// The papers as a list to read, or as their JSON array.
void printPapers(const QList<Paper> &papers, const Output &output);
/// One paper with every field, or its JSON object.
void printOnePaper(const Paper &paper, const Output &output);
