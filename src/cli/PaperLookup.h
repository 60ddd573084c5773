#pragma once

#include "base/Result.h"
#include "cli/Command.h"
#include "store/Bookmark.h"
#include "store/Paper.h"

#include <QString>

/// Shortest prefix by which a paper or a bookmark may be named. Chosen: git's lower bound, long enough not to
/// hit by chance.
inline constexpr int kShortestIdPrefix = 4;

/// The paper that `idOrPrefix` names. Fails, in words for the person who typed it, when the prefix is too
/// short, names no paper or more than one.
Result<Paper> findPaper(const QString &idOrPrefix, const CommandContext &context);
/// The same for a bookmark of any paper.
Result<Bookmark> findBookmark(const QString &idOrPrefix, const CommandContext &context);

/// Why `page` (1-based) cannot be one of `paper`; empty when it can.
QString objectionToPage(qint64 page, const Paper &paper);

/// Reports a failure that leaves a command without an answer: on standard error, and as {"error": text} where
/// a JSON document is due. Answers `ExitStatus::Failed`.
ExitStatus fail(const Error &error, const CommandContext &context);
/// The same for a request that makes no sense; answers `ExitStatus::WrongUsage`.
ExitStatus refuse(const QString &text, const CommandContext &context);
