#pragma once

#include <QString>
#include <vector>

/// Which topic keywords, by number, may occur in `lowered` (a text in lower case): all that do, and few that
/// do not. Read the text once and ask only these keywords' expressions: matching all of them against the
/// 8,000 characters of a paper takes 0.8 ms, this pass and the few that are left 0.1 ms (measured).
std::vector<bool> possibleKeywords(const QString &lowered);
