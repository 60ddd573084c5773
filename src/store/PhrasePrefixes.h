#pragma once

#include <QString>
#include <QStringList>

/// The beginning of a word that each phrase of a full-text expression looks for, in the order of the phrases:
/// "trans" for trans*, empty for a phrase that is no prefix.
///
/// Knows words, quoted phrases, prefixes, AND, OR, NOT, NEAR and parentheses; answers an empty list for an
/// expression that holds anything else. What FTS5 rejects may get any answer.
QStringList phrasePrefixes(const QString &expression);
