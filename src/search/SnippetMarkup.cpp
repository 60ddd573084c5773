#include "search/SnippetMarkup.h"

#include "search/SnippetMarkers.h"

#include <algorithm>

namespace
{
void append(QList<SnippetSpan> &spans, const QString &text, bool isMatch)
{
    if (!text.isEmpty())
        spans.append({.text = text, .isMatch = isMatch, .isCut = false});
}

QList<SnippetSpan> spansBetween(const QString &snippet, const QList<SnippetMarker> &markers)
{
    QList<SnippetSpan> spans;
    qsizetype from = 0;
    for (const SnippetMarker &marker : markers) {
        append(spans, snippet.mid(from, marker.position - from), marker.kind == SnippetMarker::MatchEnd);
        if (marker.kind == SnippetMarker::Cut)
            spans.append({.text = QStringLiteral("…"), .isMatch = false, .isCut = true});
        from = marker.position + kSnippetMarkerLength;
    }
    append(spans, snippet.mid(from), false);
    return spans;
}
} // namespace

QList<SnippetSpan> markUpSnippet(const QString &snippet)
{
    return spansBetween(snippet, findSnippetMarkers(snippet, {}));
}

QList<SnippetSpan> markUpSnippet(const QString &snippet, const QString &query)
{
    const auto isMatchStart = [](const SnippetMarker &marker) {
        return marker.kind == SnippetMarker::MatchStart;
    };
    const QList<SnippetMarker> markers = findSnippetMarkers(snippet, foldedWords(query));
    // The index folds some letters otherwise than we do; then structure has to do.
    if (std::none_of(markers.begin(), markers.end(), isMatchStart))
        return markUpSnippet(snippet);
    return spansBetween(snippet, markers);
}
