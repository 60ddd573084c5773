#pragma once

#include <QString>

inline constexpr char kSampleArticleTitle[] = "Finding a Passage Again";
/// On page 5 of the file.
inline constexpr char kSampleArticlePassage[] =
    "stayed in their minds, together with perhaps two rarer words; titles seldom";

/// Writes an article that never was into `folder`, with an outline, labels of its pages, a photograph and a
/// chart, and answers its path.
QString writeSampleArticle(const QString &folder);
