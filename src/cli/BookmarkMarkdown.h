#pragma once

#include "store/Bookmark.h"
#include "store/Paper.h"

#include <QList>
#include <QString>

/// The bookmarks as a Markdown document: the paper's title as heading, every bookmark a block quote whose
/// last line says its label, in bold, and its page. Whatever Markdown would take for its own is escaped, so
/// that the texts read as they are stored; their lines stay lines of the quote. No line break at the end.
QString bookmarksAsMarkdown(const Paper &paper, const QList<Bookmark> &bookmarks);
