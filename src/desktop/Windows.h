#pragma once

#include "app/OpenedWindow.h"
#include "reader/PDFOpenRequest.h"
#include "ui/ContentView.h"

/// Makes and shows the library window; it is destroyed when it is closed.
OpenedWindow showLibraryWindow(const ContentView::Collaborators &collaborators);

/// Hands the file to the desktop's own viewer of PDFs, which knows nothing of pages and passages to show.
OpenedWindow openInDefaultViewer(const PDFOpenRequest &request);

/// Shows what a check for updates came to, in a small message over the active window.
void showUpdateResult(const QString &result);
