#pragma once

#include "base/Result.h"

#include <QString>

/// Papers of a generated library have this many pages each.
inline constexpr qint64 kPagesPerPaper = 20;

/// Makes a library of `pages` page rows below `folder`, or finds the one made earlier, and answers the folder
/// to name as XDG_DATA_HOME. The same pages make the same library. A million pages take some minutes and 5
/// GB.
///
/// Pages hold 250 to 400 words of `Vocabulary`; a paper keeps coming back to the words of its own subject, as
/// real ones do. Written through the store itself, in transactions of many papers.
Result<QString> generatedLibrary(const QString &folder, qint64 pages);
