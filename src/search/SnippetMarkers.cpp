#include "search/SnippetMarkers.h"

#include "base/TextClasses.h"

#include <algorithm>

namespace
{
/// A snippet has at most ten words, so at most twenty places where a marker can touch one; far more means
/// that this is no snippet, and no time is spent on it.
constexpr qsizetype kMostRuns = 64;

/// How much a reading of the dots is preferred. A marker counts, more so where it stands as markers usually
/// do; a match that swallows dots is unlikely.
constexpr int kMarkerScore = 2;
constexpr int kUsualPlaceScore = 1;
constexpr int kDotsInMatchScore = -2;

/// Three or more dots in a row that touch a word.
struct DotRun {
    qsizetype begin = 0;
    qsizetype length = 0;
    bool touchesWordBefore = false;
    bool touchesWordAfter = false;
    bool isAtStart = false;
    bool isAtEnd = false;

    qsizetype lastMarker() const { return begin + length - kSnippetMarkerLength; }
};

/// One way to read the snippet up to some run.
struct Reading {
    QList<SnippetMarker> markers;
    int score = 0;
};

bool isWordCharacterBefore(const QString &text, qsizetype position)
{
    if (position <= 0)
        return false;
    const QChar last = text[position - 1];
    if (last.isLowSurrogate() && position >= 2)
        return isAlphanumeric(QChar::surrogateToUcs4(text[position - 2], last));
    return isAlphanumeric(last.unicode());
}

bool isWordCharacterAt(const QString &text, qsizetype position)
{
    if (position >= text.size())
        return false;
    const QChar first = text[position];
    if (first.isHighSurrogate() && position + 1 < text.size())
        return isAlphanumeric(QChar::surrogateToUcs4(first, text[position + 1]));
    return isAlphanumeric(first.unicode());
}

QList<DotRun> dotRuns(const QString &text)
{
    QList<DotRun> runs;
    for (qsizetype begin = text.indexOf(u'.'); begin >= 0;) {
        qsizetype end = begin;
        while (end < text.size() && text[end] == u'.')
            ++end;
        const DotRun run{
            begin,      end - begin,       isWordCharacterBefore(text, begin), isWordCharacterAt(text, end),
            begin == 0, end == text.size()};
        if (run.length >= kSnippetMarkerLength && (run.touchesWordBefore || run.touchesWordAfter))
            runs.append(run);
        begin = text.indexOf(u'.', end);
    }
    return runs;
}

/// Walks over the runs and keeps the best reading that is outside a match, and those inside one.
class MarkerSearch
{
public:
    MarkerSearch(const QString &snippet, const QStringList &words)
        : m_snippet(snippet)
        , m_words(words)
    {
    }

    QList<SnippetMarker> best()
    {
        const QList<DotRun> runs = dotRuns(m_snippet);
        if (runs.size() > kMostRuns)
            return {};
        for (const DotRun &run : runs)
            read(run);
        return m_outside.markers;
    }

private:
    void read(const DotRun &run)
    {
        Reading outside = m_outside;
        QList<Reading> inside = m_inside;
        for (Reading &reading : inside)
            reading.score += kDotsInMatchScore;

        readCuts(run, outside, inside);
        readStart(run, m_outside, inside);
        readEnds(run, outside, inside);
        m_outside = outside;
        m_inside = inside;
    }

    /// Text is cut right before a word, or a match, at the very start; right after one at the very end.
    void readCuts(const DotRun &run, Reading &outside, QList<Reading> &inside) const
    {
        const SnippetMarker cut{run.begin, SnippetMarker::Cut};
        const bool isOne = run.length == kSnippetMarkerLength;
        const bool isTwo = run.length == 2 * kSnippetMarkerLength;
        if (run.isAtStart && run.touchesWordAfter && isTwo)
            inside.append(
                with(with(m_outside, cut, false), {run.lastMarker(), SnippetMarker::MatchStart}, true));
        if (isOne && ((run.isAtStart && run.touchesWordAfter) || (run.isAtEnd && run.touchesWordBefore)))
            prefer(outside, with(m_outside, cut, false));
    }

    /// A match starts right before a word and never right after one.
    void readStart(const DotRun &run, const Reading &before, QList<Reading> &inside) const
    {
        const bool isOne = run.length == kSnippetMarkerLength;
        if (run.touchesWordAfter && !(isOne && run.touchesWordBefore))
            inside.append(with(before, {run.lastMarker(), SnippetMarker::MatchStart}, isOne));
    }

    /// A match ends right after a word; the same run may start the next one or cut the text.
    void readEnds(const DotRun &run, Reading &outside, QList<Reading> &inside) const
    {
        const bool isOne = run.length == kSnippetMarkerLength;
        if (!run.touchesWordBefore || (isOne && run.touchesWordAfter))
            return;
        for (const Reading &open : m_inside) {
            if (!isMatch(open.markers.last().position + kSnippetMarkerLength, run.begin))
                continue;
            const Reading closed = with(open, {run.begin, SnippetMarker::MatchEnd}, !run.touchesWordAfter);
            prefer(outside, closed);
            if (run.isAtEnd && run.length == 2 * kSnippetMarkerLength)
                prefer(outside, with(closed, {run.lastMarker(), SnippetMarker::Cut}, false));
            if (run.touchesWordAfter && run.length > 2 * kSnippetMarkerLength)
                inside.append(with(closed, {run.lastMarker(), SnippetMarker::MatchStart}, false));
        }
    }

    bool isMatch(qsizetype begin, qsizetype end) const
    {
        if (m_words.isEmpty())
            return true;
        const QStringList found = foldedWords(m_snippet.mid(begin, end - begin));
        return std::all_of(found.begin(), found.end(), [this](const QString &word) {
            return std::any_of(m_words.begin(), m_words.end(),
                               [&word](const QString &wanted) { return word.startsWith(wanted); });
        });
    }

    static Reading with(Reading reading, const SnippetMarker &marker, bool isUsualPlace)
    {
        reading.markers.append(marker);
        reading.score += kMarkerScore + (isUsualPlace ? kUsualPlaceScore : 0);
        return reading;
    }

    static void prefer(Reading &best, const Reading &other)
    {
        if (other.score > best.score)
            best = other;
    }

    const QString &m_snippet;
    const QStringList &m_words;
    Reading m_outside;
    QList<Reading> m_inside;
};
} // namespace

QList<SnippetMarker> findSnippetMarkers(const QString &snippet, const QStringList &words)
{
    return MarkerSearch(snippet, words).best();
}

QStringList foldedWords(const QString &text)
{
    QStringList words;
    QString word;
    const auto endWord = [&] {
        if (!word.isEmpty())
            words.append(word.toCaseFolded());
        word.clear();
    };
    for (const char32_t c : text.normalized(QString::NormalizationForm_D).toStdU32String()) {
        if (!isAlphanumeric(c))
            endWord();
        else if (!QChar::isMark(c))
            word += QString::fromUcs4(&c, 1);
    }
    endWord();
    return words;
}
