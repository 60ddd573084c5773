#pragma once

#include "reader/PDFOpenRequest.h"

#include <QWidget>

class CoverCache;
class LibraryViewModel;

/// Shows the selected paper beside the grid, and edits it.
class PaperDetailPanel : public QWidget
{
    Q_OBJECT

public:
    PaperDetailPanel(LibraryViewModel &vm, CoverCache &covers, OpenReaderWindow openWindow,
                     QWidget *parent = nullptr);

    void beginEditing();  ///< of title, authors and year; does nothing without a paper
    void focusTagField(); ///< likewise
};
