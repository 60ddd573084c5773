#pragma once

#include "base/Result.h"

#include <QString>
#include <QStringList>

/// Writes a cover "<id>.jpg" of the usual size for each id into `folder`: pages with lines of grey, drawn
/// alike every time. A few dozen different pictures serve all papers, as links to the same files.
Result<void> writeGeneratedCovers(const QString &folder, const QStringList &paperIds);
