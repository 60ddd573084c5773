#pragma once

#include "base/Result.h"
#include "store/Chunk.h"
#include "store/Paper.h"

#include <QList>
#include <optional>

class Database;

/// A paper on its way into the library.
struct NewPaper {
    Paper paper;         ///< with the tags to give it
    QString dateIndexed; ///< stored time form
    std::optional<QString> contentHash;
    QList<Chunk> chunks;
};

/// Writes the paper's row, full-text rows and tags in one transaction, in place of what the library had
/// under the same id. An operation of the database thread.
///
/// Answers nothing when it was written. When the library has a paper of the same content by now, because
/// another job or program was quicker, nothing is written and that paper is the answer.
Result<std::optional<Paper>> writePaper(Database &database, const NewPaper &paper);
