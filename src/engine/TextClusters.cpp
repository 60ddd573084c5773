#include "engine/TextClusters.h"

#include <algorithm>
#include <unicode/uchar.h>

namespace
{
// Both are parts of the font's size. Positions are rounded by the programs that write them.
constexpr float kSlack = 0.02f;
constexpr float kWordGap = 0.15f;

bool isBetween(char32_t c, char32_t first, char32_t last)
{
    return c >= first && c <= last;
}

bool isMark(char32_t c)
{
    return (U_GET_GC_MASK(static_cast<UChar32>(c)) & (U_GC_MN_MASK | U_GC_ME_MASK)) != 0;
}

char32_t characterOf(const fz_stext_char *c)
{
    return static_cast<char32_t>(c->c);
}

/// Where a character begins and ends along its line's direction.
struct Extent {
    float start;
    float end;

    Extent(const fz_stext_char *c, const fz_stext_line *line)
        : start(c->quad.ll.x * line->dir.x + c->quad.ll.y * line->dir.y)
        , end(c->quad.lr.x * line->dir.x + c->quad.lr.y * line->dir.y)
    {
    }
};

class ClusterBuilder
{
public:
    explicit ClusterBuilder(const fz_stext_line *line)
        : m_line(line)
    {
    }

    /// Takes `c` and what belongs to its glyph; answers the last character taken.
    const fz_stext_char *add(const fz_stext_char *c)
    {
        const Extent extent(c, m_line);
        if (isMark(characterOf(c))) {
            addMark(characterOf(c), extent.start < m_end - kSlack * c->size);
            return c;
        }
        m_clusters.push_back({characterOf(c), std::move(m_waitingMarks), fz_rect_from_quad(c->quad)});
        m_waitingMarks.clear();
        m_end = extent.end;
        for (int count = furtherLetters(c, m_line); count > 0; --count) {
            c = c->next;
            if (c->c != kHiddenCharacter)
                m_clusters.back().rest.push_back(characterOf(c));
        }
        return c;
    }

    std::vector<TextCluster> take()
    {
        if (!m_clusters.empty())
            m_clusters.back().rest += m_waitingMarks;
        return std::move(m_clusters);
    }

private:
    /// A mark belongs to the letter on which it was drawn. From left to right the last mark of a letter comes
    /// first and the letter comes last.
    void addMark(char32_t mark, bool isOnPrevious)
    {
        if (isOnPrevious && !m_clusters.empty())
            m_clusters.back().rest.push_back(mark);
        else
            m_waitingMarks.insert(m_waitingMarks.begin(), mark);
    }

    const fz_stext_line *m_line;
    std::vector<TextCluster> m_clusters;
    std::u32string m_waitingMarks;
    float m_end = 0;
};
} // namespace

bool hasNoWidth(const fz_stext_char *c, const fz_stext_line *line)
{
    const Extent extent(c, line);
    return std::abs(extent.end - extent.start) < kSlack * c->size;
}

int furtherLetters(const fz_stext_char *c, const fz_stext_line *line)
{
    int count = 0;
    bool hasLetter = false;
    for (const fz_stext_char *next = c->next; next && hasNoWidth(next, line); next = next->next) {
        ++count;
        hasLetter = hasLetter || !isMark(characterOf(next));
    }
    return hasLetter ? count : 0;
}

bool isRightToLeft(char32_t c)
{
    return c >= 0x590 &&
           (isBetween(c, 0x590, 0x8ff) || isBetween(c, 0xfb1d, 0xfdff) || isBetween(c, 0xfe70, 0xfeff) ||
            isBetween(c, 0x10800, 0x10fff) || isBetween(c, 0x1e800, 0x1efff));
}

std::vector<TextCluster> clustersOf(const fz_stext_line *line)
{
    ClusterBuilder builder(line);
    for (const fz_stext_char *c = line->first_char; c; c = c->next) {
        if (c->c != kHiddenCharacter)
            c = builder.add(c);
    }
    return builder.take();
}

bool isDrawnRightToLeft(const fz_stext_line *line)
{
    int balance = 0;
    for (const fz_stext_char *c = line->first_char; c && c->next; c = c->next) {
        if (!isRightToLeft(characterOf(c)) || !isRightToLeft(characterOf(c->next)))
            continue;
        const float middle = (Extent(c, line).start + Extent(c, line).end) / 2;
        const Extent next(c->next, line);
        if (hasNoWidth(c, line) || hasNoWidth(c->next, line))
            continue;
        balance += next.end < middle ? 1 : -1;
    }
    return balance > 0;
}

std::vector<TextCluster> charactersDrawnRightToLeft(const fz_stext_line *line)
{
    std::vector<TextCluster> characters;
    for (const fz_stext_char *c = line->first_char; c; c = c->next) {
        const fz_rect box = fz_rect_from_quad(c->quad);
        if (c->c != kHiddenCharacter)
            characters.push_back({characterOf(c), {}, box});
        if (c->next && Extent(c, line).start - Extent(c->next, line).end > kWordGap * c->size &&
            c->c != ' ' && c->next->c != ' ' && isRightToLeft(characterOf(c->next)))
            characters.push_back({' ', {}, box});
    }
    return characters;
}
