#pragma once

#include "base/Result.h"
#include "pdf/PDFDocument.h"
#include "store/Paper.h"

#include <QString>
#include <stop_token>

class BookService;
class Clock;
class CoverStore;
class DatabaseManager;
class NativeLibraryService;

/// Codes of the errors in the domain "PDFIndexer".
enum class PDFIndexerErrorCode {
    CannotLoad = 1,        ///< "Failed to load PDF"
    MissingAfterWrite = 2, ///< "Failed to retrieve paper after indexing"
    ChangedWhileRead = 3,  ///< the file was written to, replaced or removed meanwhile; nothing was stored
};

/// Turns one PDF file into a paper of the library. The only writer of new papers. Holds no state between
/// calls, so any number of them may run at once, each on a thread of its own.
class PDFIndexer
{
public:
    struct Collaborators {
        DatabaseManager &db;
        NativeLibraryService &library;
        BookService &books;
        const CoverStore &covers;
        const Clock &clock;
        OpenPDF openPDF;
    };
    explicit PDFIndexer(Collaborators collaborators);

    /// Indexes the file at `path` (absolute) and answers the stored paper; a file whose content the library
    /// has already answers the paper it has. Blocks. `stop` is looked at before every page and before the
    /// write: once it fires the call fails with `cancelledError` and nothing is written.
    Result<Paper> indexFile(const QString &path, std::stop_token stop = {});

private:
    Collaborators m_with;
};
