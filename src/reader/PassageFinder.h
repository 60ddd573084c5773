#pragma once

#include "pdf/PDFSelection.h"

#include <QStringList>
#include <optional>
#include <stop_token>

/// How far from its first word a word of a passage may stand, in points from centre to centre.
inline constexpr double kPassageReach = 200;

/// Of a passage, more are not looked for. Chosen: far more than fit within `kPassageReach` of a word in
/// readable type, so that only texts that are no passage are cut.
inline constexpr qsizetype kMostPassageWords = 1000;

/// The words by which a passage is found: pieces between white space of more than two characters, trimmed of
/// what is neither letter nor digit.
QStringList passageWords(const QString &passage);

/// The best place of a passage on a page, however its lines were broken: the words that stand closest
/// together, case and diacritics aside, one of them missing at most. Nothing when there is none, or when
/// `stop` fires.
///
/// Pure; for a worker thread: a page of 100,000 characters takes some milliseconds, a hostile one may take
/// seconds.
std::optional<PDFSelection> findPassage(const QString &passage, qint64 pageIndex, const PDFPageText &page,
                                        const std::stop_token &stop = {});
