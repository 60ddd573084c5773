#pragma once

#include <QStringList>

class QMimeData;

/// Whether papers of the library are dragged.
bool isCardDrag(const QMimeData *data);
/// The ids of the dragged papers; empty when none are.
QStringList draggedPaperIds(const QMimeData *data);
/// The files and folders of this machine among what is dragged, as paths.
QStringList draggedLocations(const QMimeData *data);
