#include "engine/LogicalOrder.h"

#include "engine/PresentationForms.h"
#include "engine/TextClusters.h"

#include <memory>
#include <unicode/ubidi.h>
#include <unicode/uchar.h>
#include <unicode/utf16.h>

namespace
{
/// The direction of the paragraph that the line is from, which the line alone can only suggest: that of most
/// of its letters.
UBiDiLevel paragraphLevel(const std::vector<TextCluster> &clusters)
{
    int balance = 0;
    for (const TextCluster &cluster : clusters) {
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

    explicit VisualText(const std::vector<TextCluster> &all)
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

void appendCluster(PlacedText &out, const TextCluster &cluster, bool isMirrored)
{
    std::string &text = out.unplaced();
    const auto base = static_cast<UChar32>(cluster.base);
    appendSpelledOut(text, static_cast<char32_t>(isMirrored ? u_charMirror(base) : base));
    for (char32_t c : cluster.rest)
        appendSpelledOut(text, c);
    out.place(cluster.box);
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

void appendAll(PlacedText &text, const std::vector<TextCluster> &clusters)
{
    for (const TextCluster &cluster : clusters)
        appendCluster(text, cluster, false);
}

/// Appends the clusters of a line that was drawn from left to right, in logical order.
void appendTurnedRound(PlacedText &text, const std::vector<TextCluster> &clusters)
{
    const VisualText visual(clusters);
    const BidiHandle bidi = analysed(visual, paragraphLevel(clusters));
    std::vector<int32_t> order(visual.units.size());
    UErrorCode status = U_ZERO_ERROR;
    if (bidi)
        ubidi_getVisualMap(bidi.get(), order.data(), &status);
    if (!bidi || U_FAILURE(status))
        return appendAll(text, clusters);
    for (int32_t unit : order) {
        const int cluster = visual.clusters[static_cast<std::size_t>(unit)];
        if (cluster >= 0)
            appendCluster(text, clusters[static_cast<std::size_t>(cluster)],
                          ubidi_getLevelAt(bidi.get(), unit) % 2 == 1);
    }
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

void appendInLogicalOrder(PlacedText &text, const fz_stext_line *line)
{
    if (isDrawnRightToLeft(line))
        appendAll(text, charactersDrawnRightToLeft(line));
    else
        appendTurnedRound(text, clustersOf(line));
}
