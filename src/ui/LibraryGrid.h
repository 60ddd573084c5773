#pragma once

#include "reader/PDFOpenRequest.h"

#include <QWidget>

class CoverCache;
class LibraryViewModel;

/// The papers of the sidebar's selection as cards, narrowed by the query's field filters.
class LibraryGrid : public QWidget
{
    Q_OBJECT

public:
    LibraryGrid(LibraryViewModel &vm, CoverCache &covers, OpenReaderWindow openWindow,
                QWidget *parent = nullptr);
};
