#pragma once

#include "reader/DocumentOpening.h"
#include "reader/PDFViewerController.h"

#include <QUrl>
#include <functional>

class BookmarkEvents;
class Clock;
class NativeLibraryService;
class Preferences;

/// What reader windows need of the program. All must outlive the windows.
struct ReaderServices {
    NativeLibraryService &library;
    BookmarkEvents &bookmarkEvents;
    PDFViewerController::SearchInPaper searchInPaper;
    const Clock &clock;
    Preferences &preferences;
    std::function<void()> showLibrary = {};
    /// Shows the library with a search for `text`.
    std::function<void(const QString &text)> searchInLibrary = {};
    DocumentOpening::MakeDocument makeDocument = engineReaderDocument;
    /// Hands an address of the web, which a person followed, to the desktop.
    std::function<void(const QUrl &address)> openAddress = {};
};
