#pragma once

#include <QList>
#include <QString>
#include <QStringList>

/// Length of "...", the one marker that the index writes.
inline constexpr qsizetype kSnippetMarkerLength = 3;

/// One "..." of a snippet that the index wrote.
struct SnippetMarker {
    enum Kind { MatchStart, MatchEnd, Cut };

    qsizetype position = 0; ///< of its first dot
    Kind kind = Cut;

    friend bool operator==(const SnippetMarker &, const SnippetMarker &) = default;
};

/// The likeliest markers of `snippet`, in order; every start has its end. With `words` (see `foldedWords`)
/// only text all of whose words begin with one of them counts as a match.
QList<SnippetMarker> findSnippetMarkers(const QString &snippet, const QStringList &words);

/// The words of a text in the form in which the index compares them: case folded, without diacritics.
QStringList foldedWords(const QString &text);
