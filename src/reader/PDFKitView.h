#pragma once

#include "reader/PDFView.h"

#include <QAbstractScrollArea>

/// Shows a document as one continuous vertical flow of pages, drawn from a byte-limited cache of page
/// pictures. Never waits for the engine.
class PDFKitView : public QAbstractScrollArea, public PDFView
{
    Q_OBJECT
};
