#pragma once

#include "store/Chunk.h"

#include <QList>

class PaperText;

/// Words of a chunk, and words that two neighbouring chunks of a page share. Chosen with the ranking in mind:
/// a chunk is long enough to hold a thought and short enough to rank by it.
inline constexpr qint64 CHUNK_SIZE = 768;
inline constexpr qint64 CHUNK_OVERLAP = 128;

/// Cuts a paper's text into the chunks of the full-text table. A chunk never crosses the end of a page; on a
/// page, each begins 640 words behind the one before it. At the end of the paper, and only there, a last
/// chunk of more than 640 words is followed by one more that repeats its tail.
///
/// The chunks' texts are views into `text`, which must stay unchanged for as long as they are used.
QList<Chunk> chunksOf(const PaperText &text);
