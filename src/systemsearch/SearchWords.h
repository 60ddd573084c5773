#pragma once

#include <QStringList>

// What a person typed into the desktop's search, as the words to look for. It comes from outside and may be
// anything, so it is bounded: what is beyond the bounds is not looked for.

inline constexpr qsizetype kMostTerms = 16;   ///< chosen: more than anybody types
inline constexpr qsizetype kLongestTerm = 64; ///< in UTF-16 units; chosen: the longest words are shorter

/// For each term that has a letter or a digit: its words with single blanks between them. A term of several
/// words ("graph-theory") stands for them side by side.
QStringList searchWords(const QStringList &terms);
