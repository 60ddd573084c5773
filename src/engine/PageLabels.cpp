#include "engine/PageLabels.h"

#include "engine/AttributeText.h"
#include "engine/Kept.h"
#include "pdf/protocol/Limits.h"

#include <algorithm>
#include <map>
#include <unordered_set>

namespace
{
// Chosen: a tree of so many levels could number every page that there is.
constexpr std::size_t kMaxDepth = 32;

LabelStyle styleNamed(std::string_view name)
{
    if (name == "D")
        return LabelStyle::Decimal;
    if (name == "R")
        return LabelStyle::UpperRoman;
    if (name == "r")
        return LabelStyle::LowerRoman;
    if (name == "A")
        return LabelStyle::UpperLetters;
    return name == "a" ? LabelStyle::LowerLetters : LabelStyle::None;
}

/// Gathers the ranges of a number tree, each guarded on its own.
class LabelWalk
{
public:
    explicit LabelWalk(fz_context *context)
        : m_context(context)
    {
    }

    void addNode(pdf_obj *node, std::size_t depth)
    {
        if (depth == kMaxDepth || isFull() || !isNew(node))
            return;
        const int numbers = lengthOf(node, PDF_NAME(Nums));
        for (int i = 0; i + 1 < numbers && !isFull(); i += 2)
            addRange(node, i);
        const int kids = lengthOf(node, PDF_NAME(Kids));
        for (int i = 0; i < kids && !isFull(); ++i) {
            if (const ObjectHandle kid = kidOf(node, i))
                addNode(kid.get(), depth + 1);
        }
    }

    std::vector<LabelRange> take() const
    {
        std::vector<LabelRange> ranges;
        for (const auto &[page, range] : m_ranges)
            ranges.push_back(range);
        return ranges;
    }

private:
    // Every node and range counts, so that a tree that says one thing a million times ends as well.
    bool isFull() { return m_seen >= kMaxLabelRanges; }

    /// A node that is written inside its parent has no number and cannot be reached twice.
    bool isNew(pdf_obj *node)
    {
        ++m_seen;
        const int number = pdf_to_num(m_context, node);
        return number == 0 || m_entered.insert(number).second;
    }

    int lengthOf(pdf_obj *node, pdf_obj *key)
    {
        int length = 0;
        (void)guarded(m_context,
                      [&] { length = pdf_array_len(m_context, pdf_dict_get(m_context, node, key)); });
        return length;
    }

    ObjectHandle kidOf(pdf_obj *node, int place)
    {
        return kept(m_context, [&] {
            pdf_obj *kid = pdf_array_get(m_context, pdf_dict_get(m_context, node, PDF_NAME(Kids)), place);
            return pdf_is_dict(m_context, kid) ? kid : nullptr;
        });
    }

    /// The range at `place` in a leaf: the first page's index and the dictionary that follows it.
    void addRange(pdf_obj *leaf, int place)
    {
        ++m_seen;
        int page = -1;
        const ObjectHandle range = kept(m_context, [&] {
            pdf_obj *numbers = pdf_dict_get(m_context, leaf, PDF_NAME(Nums));
            page = pdf_array_get_int(m_context, numbers, place);
            pdf_obj *found = pdf_array_get(m_context, numbers, place + 1);
            return pdf_is_dict(m_context, found) ? found : nullptr;
        });
        if (range && page >= 0 && static_cast<std::uint32_t>(page) < kMaxPageCount)
            m_ranges.try_emplace(page, rangeFrom(range.get(), static_cast<std::uint32_t>(page)));
    }

    LabelRange rangeFrom(pdf_obj *range, std::uint32_t page)
    {
        LabelStyle style = LabelStyle::None;
        int number = 1;
        const char *prefix = "";
        std::size_t prefixBytes = 0;
        (void)guarded(m_context, [&] {
            if (pdf_obj *start = pdf_dict_gets(m_context, range, "St"))
                number = pdf_to_int(m_context, start);
            style = styleNamed(pdf_to_name(m_context, pdf_dict_get(m_context, range, PDF_NAME(S))));
            pdf_obj *text = pdf_dict_get(m_context, range, PDF_NAME(P));
            prefix = pdf_to_str_buf(m_context, text);
            prefixBytes = pdf_to_str_len(m_context, text);
        });
        return {page, style, static_cast<std::uint32_t>(std::max(number, 1)),
                labelPrefix({prefix, prefixBytes})};
    }

    fz_context *m_context;
    std::unordered_set<int> m_entered;
    std::map<int, LabelRange> m_ranges;
    std::uint32_t m_seen = 0;
};
} // namespace

Reply pageLabelsOf(fz_context *context, pdf_document *document)
{
    const ObjectHandle root = kept(
        context, [&] { return pdf_dict_getp(context, pdf_trailer(context, document), "Root/PageLabels"); });
    LabelWalk walk(context);
    if (root)
        walk.addNode(root.get(), 0);
    return PageLabelsReply{walk.take()};
}
