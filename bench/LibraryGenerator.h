#pragma once

#include "base/Result.h"

#include <QString>

/// What a generated library is made of.
struct LibraryShape {
    qint64 papers = 0;
    qint64 pagesPerPaper = 20;
    bool hasCovers = false;
};

/// Makes a library below `folder`, or finds the one made earlier, and answers the folder to name as
/// XDG_DATA_HOME. The same shape makes the same library. A million pages take some minutes and 5 GB.
///
/// Pages hold 250 to 400 words of `Vocabulary`; a paper keeps coming back to the words of its own subject, as
/// real ones do, and has 2 tags of its own and one that many share. Written through the store itself, in
/// transactions of many papers.
Result<QString> generatedLibrary(const QString &folder, const LibraryShape &shape);
