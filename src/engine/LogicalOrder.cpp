#include "engine/LogicalOrder.h"

#include "pdf/protocol/Utf8.h"

#include <array>
#include <memory>
#include <string_view>
#include <unicode/ubidi.h>
#include <unicode/uchar.h>
#include <unicode/unorm2.h>
#include <unicode/ustring.h>
#include <vector>

namespace
{
/// A letter with the marks that belong to it, or one character that stands for several: they keep their
/// order.
struct Cluster {
    char32_t base = 0;
    std::u32string rest;
};

bool isBetween(char32_t c, char32_t first, char32_t last)
{
    return c >= first && c <= last;
}

bool isRightToLeft(char32_t c)
{
    return c >= 0x590 &&
           (isBetween(c, 0x590, 0x8ff) || isBetween(c, 0xfb1d, 0xfdff) || isBetween(c, 0xfe70, 0xfeff) ||
            isBetween(c, 0x10800, 0x10fff) || isBetween(c, 0x1e800, 0x1efff));
}

bool isPresentationForm(char32_t c)
{
    return isBetween(c, 0xfb00, 0xfb06) || isBetween(c, 0xfb1d, 0xfdff) || isBetween(c, 0xfe70, 0xfeff);
}

bool isMark(char32_t c)
{
    return (U_GET_GC_MASK(static_cast<UChar32>(c)) & (U_GC_MN_MASK | U_GC_ME_MASK)) != 0;
}

/// Where a character begins and ends along its line's direction.
struct Extent {
    float start;
    float end;
};

Extent extentOf(const fz_stext_char *c, fz_point direction)
{
    const auto along = [direction](fz_point p) {
        return p.x * direction.x + p.y * direction.y;
    };
    return {along(c->quad.ll), along(c->quad.lr)};
}

/// Sorts a line's characters into clusters. A mark goes to the letter on which it was drawn, be that written
/// before or after it; a letter without width of its own is a further letter of the glyph before it.
class ClusterBuilder
{
public:
    explicit ClusterBuilder(fz_point direction)
        : m_direction(direction)
    {
    }

    void add(const fz_stext_char *c)
    {
        const auto character = static_cast<char32_t>(c->c);
        const Extent extent = extentOf(c, m_direction);
        const float slack = c->size * kSlack;
        const bool isOnPrevious = !m_clusters.empty() && extent.end <= m_end + slack;
        if (isMark(character)) {
            if (m_clusters.empty() || extent.start >= m_end - slack)
                m_waitingMarks.push_back(character);
            else
                m_clusters.back().rest.push_back(character);
        } else if (isOnPrevious && extent.end - extent.start < slack && isRightToLeft(character)) {
            m_clusters.back().rest.push_back(character);
        } else {
            m_clusters.push_back({character, std::move(m_waitingMarks)});
            m_waitingMarks.clear();
            m_end = extent.end;
        }
    }

    std::vector<Cluster> take()
    {
        if (!m_waitingMarks.empty() && !m_clusters.empty())
            m_clusters.back().rest += m_waitingMarks;
        return std::move(m_clusters);
    }

private:
    // Of the font's size: positions are rounded by the programs that write them.
    static constexpr float kSlack = 0.02f;

    fz_point m_direction;
    std::vector<Cluster> m_clusters;
    std::u32string m_waitingMarks;
    float m_end = 0;
};

std::vector<Cluster> clustersOf(const fz_stext_line *line)
{
    ClusterBuilder builder(line->dir);
    for (const fz_stext_char *c = line->first_char; c; c = c->next)
        builder.add(c);
    return builder.take();
}

/// The direction of the paragraph that the line is from, which the line alone can only suggest: that of most
/// of its letters.
UBiDiLevel paragraphLevel(const std::vector<Cluster> &clusters)
{
    int balance = 0;
    for (const Cluster &cluster : clusters) {
        const UCharDirection direction = u_charDirection(static_cast<UChar32>(cluster.base));
        if (direction == U_RIGHT_TO_LEFT || direction == U_RIGHT_TO_LEFT_ARABIC)
            ++balance;
        else if (direction == U_LEFT_TO_RIGHT)
            --balance;
    }
    return balance > 0 ? 1 : 0;
}

/// The bases of all clusters as UTF-16, and which cluster each of its first units is from.
struct VisualText {
    std::u16string units;
    std::vector<int> clusters; ///< -1 for the second unit of a pair

    explicit VisualText(const std::vector<Cluster> &all)
    {
        for (std::size_t i = 0; i < all.size(); ++i) {
            const char32_t c = all[i].base;
            clusters.push_back(static_cast<int>(i));
            if (c < 0x10000) {
                units.push_back(static_cast<char16_t>(c));
            } else {
                units.push_back(U16_LEAD(c));
                units.push_back(U16_TRAIL(c));
                clusters.push_back(-1);
            }
        }
    }
};

void appendFolded(std::string &text, char32_t character)
{
    if (!isPresentationForm(character)) {
        appendUtf8(text, character);
        return;
    }
    UErrorCode status = U_ZERO_ERROR;
    const UNormalizer2 *folding = unorm2_getNFKCInstance(&status);
    const auto source = static_cast<char16_t>(character);
    std::array<char16_t, 32> folded; // the longest spelling, of U+FDFA, has 18
    const int32_t length = unorm2_normalize(folding, &source, 1, folded.data(), folded.size(), &status);
    if (U_FAILURE(status)) {
        appendUtf8(text, character);
        return;
    }
    // All of these blocks' spellings lie in the basic plane.
    for (char16_t unit : std::u16string_view(folded.data(), static_cast<std::size_t>(length)))
        appendUtf8(text, unit);
}

void appendCluster(std::string &text, const Cluster &cluster, bool isMirrored)
{
    const auto base = static_cast<UChar32>(cluster.base);
    appendFolded(text, static_cast<char32_t>(isMirrored ? u_charMirror(base) : base));
    for (char32_t c : cluster.rest)
        appendFolded(text, c);
}

struct BidiCloser {
    void operator()(UBiDi *bidi) const { ubidi_close(bidi); }
};
using BidiHandle = std::unique_ptr<UBiDi, BidiCloser>;

/// The line read backwards from its looks to the order of typing; nothing when ICU is out of memory.
BidiHandle analysed(const VisualText &visual, UBiDiLevel level)
{
    BidiHandle bidi(ubidi_open());
    if (!bidi)
        return nullptr;
    // Judged on texts brought into visual order by the standard algorithm: this mode restored every line of a
    // known paragraph direction, numbers included; the others did not.
    ubidi_setReorderingMode(bidi.get(), UBIDI_REORDER_INVERSE_LIKE_DIRECT);
    UErrorCode status = U_ZERO_ERROR;
    ubidi_setPara(bidi.get(), visual.units.data(), static_cast<int32_t>(visual.units.size()), level, nullptr,
                  &status);
    return U_SUCCESS(status) ? std::move(bidi) : nullptr;
}
} // namespace

bool hasRightToLeft(const fz_stext_line *line)
{
    for (const fz_stext_char *c = line->first_char; c; c = c->next) {
        if (isRightToLeft(static_cast<char32_t>(c->c)))
            return true;
    }
    return false;
}

std::string inLogicalOrder(const fz_stext_line *line)
{
    const std::vector<Cluster> clusters = clustersOf(line);
    const VisualText visual(clusters);
    const BidiHandle bidi = analysed(visual, paragraphLevel(clusters));
    std::vector<int32_t> order(visual.units.size());
    UErrorCode status = U_ZERO_ERROR;
    if (bidi)
        ubidi_getVisualMap(bidi.get(), order.data(), &status);
    std::string text;
    if (!bidi || U_FAILURE(status)) {
        for (const Cluster &cluster : clusters)
            appendCluster(text, cluster, false);
        return text;
    }
    for (int32_t unit : order) {
        const int cluster = visual.clusters[static_cast<std::size_t>(unit)];
        if (cluster >= 0)
            appendCluster(text, clusters[static_cast<std::size_t>(cluster)],
                          ubidi_getLevelAt(bidi.get(), unit) % 2 == 1);
    }
    return text;
}
