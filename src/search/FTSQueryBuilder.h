#pragma once

#include <QString>
#include <optional>

/// Turns what a person typed into an expression that FTS5 can match: every word a prefix term, with quoted
/// phrases, AND, OR, NOT and NEAR(… , distance) kept. Empty when there is nothing to search for. FTS5 may
/// still reject what the operators say, for example a leading NOT. Never fails; takes time linear in `text`.
QString buildFTSQuery(const QString &text);

/// The NEAR clause for the text between a group's parentheses; none when it holds no usable term.
std::optional<QString> buildNearClause(const QString &inner);

/// Whether `term` holds a character that FTS5 does not take in a bare word: anything but letters, marks,
/// numbers and underscores.
bool needsQuoting(const QString &term);
