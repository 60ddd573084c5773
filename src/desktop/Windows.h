#pragma once

#include "app/OpenedWindow.h"
#include "app/Updater.h"
#include "reader/PDFOpenRequest.h"
#include "ui/ContentView.h"

#include <functional>

class SessionManager;
struct ReaderServices;

/// Makes and shows the library window; it is destroyed when it is closed.
OpenedWindow showLibraryWindow(const ContentView::Collaborators &collaborators);

/// Makes and shows a reader window, which `sessions` knows of until the person closes it: the end of the
/// program, of which `isQuitting` tells, does not count.
OpenedWindow showReaderWindow(const PDFOpenRequest &request, const ReaderServices &services,
                              SessionManager &sessions, const std::function<bool()> &isQuitting);

/// Asks whether to open the papers again that may have ended the program, in a small message over the
/// library window. No answer comes when that window is closed before.
void askToReopen(std::function<void(bool reopen)> answer);

/// Shows the update window over the library window, or over the active one where there is none.
void showUpdates(Updater &updater, Updater::Attention attention);
