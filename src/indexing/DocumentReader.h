#pragma once

#include "base/Result.h"
#include "indexing/PaperText.h"

#include <chrono>
#include <stop_token>

class Clock;
class PDFDocument;

/// When the reading of a document ends before its last page. What was read until then is kept.
struct ReadingLimits {
    /// Unreadable pages in a row. Chosen: damaged files that go on behind a gap had gaps of fewer pages, and
    /// a document that claims a thousand million pages is left at once.
    int failuresInARow = 20;
    /// Time for all pages of one document. Chosen: a thousand times what a usual paper takes.
    std::chrono::seconds time{120};
    qsizetype textBytes = PaperText::kMaxBytes;
};

/// What reading all pages of a document gave.
struct DocumentContent {
    PaperText text;
    /// The number of pages to show. A document's claim stands unless the document refutes it: when reading
    /// ended at a run of unreadable pages, or when the claim is beyond `kMaxClaimedPages` and not every page
    /// could be tried, only the pages up to the last readable one count. 0, which says "unknown", is left of
    /// such a claim when no page could be read.
    qint64 pageCount = 0;
};

/// Page counts that are believed without proof. Chosen: no printed work comes near.
inline constexpr qint64 kMaxClaimedPages = 1'000'000;

/// Reads the words of all pages in order. Fails only with `cancelledError` (`stop` is looked at before every
/// page) or when the engine cannot be started; see `PageReader` for pages that fail.
Result<DocumentContent> readDocument(PDFDocument &document, const Clock &clock, std::stop_token stop,
                                     const ReadingLimits &limits = {});
