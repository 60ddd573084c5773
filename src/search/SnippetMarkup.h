#pragma once

#include <QList>
#include <QString>

/// A piece of a snippet as it is shown.
struct SnippetSpan {
    QString text;
    bool isMatch = false;
    bool isCut = false; ///< the text is "…" and stands for what was left out

    friend bool operator==(const SnippetSpan &, const SnippetSpan &) = default;
};

/// Tells what the "..." in a snippet mean. The index writes them before and after every match and where the
/// text was cut, and the text may hold dots of its own; structure decides, and dots that cannot be a marker
/// stay text. A wrong guess mis-places an emphasis, it never loses a word.
QList<SnippetSpan> markUpSnippet(const QString &snippet);

/// The same, sure of its matches because it knows what was searched for: `query` as the person typed it.
/// Prefer this form; text such as "we think... that" is a riddle without it.
QList<SnippetSpan> markUpSnippet(const QString &snippet, const QString &query);
