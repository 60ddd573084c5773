#pragma once

#include "reader/PDFOpenRequest.h"

#include <QWidget>

class CoverCache;
class LibraryViewModel;

/// The results of a full-text search as cards with their passages; opening one opens the reader on it.
class SearchResultsView : public QWidget
{
    Q_OBJECT

public:
    SearchResultsView(LibraryViewModel &vm, CoverCache &covers, OpenReaderWindow openWindow,
                      QWidget *parent = nullptr);
};
