#include "engine/Outline.h"

#include "engine/AttributeText.h"
#include "engine/Destinations.h"
#include "engine/Kept.h"
#include "pdf/protocol/Limits.h"

#include <unordered_set>

namespace
{
// Above it no map of the pages is made: MuPDF makes it as large as the document claims to be.
constexpr int kMaxMappedPages = 100'000;

/// While it lives, MuPDF finds the index of a page by a map instead of counting the pages before it.
class PageMap
{
public:
    PageMap(fz_context *context, pdf_document *document, int pageCount)
        : m_context(context)
        , m_document(document)
    {
        if (pageCount > 0 && pageCount <= kMaxMappedPages)
            m_isLoaded = !guarded(context, [&] { pdf_load_page_tree(context, document); });
    }
    ~PageMap()
    {
        if (m_isLoaded)
            pdf_drop_page_tree(m_context, m_document);
    }
    PageMap(const PageMap &) = delete;
    PageMap &operator=(const PageMap &) = delete;

private:
    fz_context *m_context;
    pdf_document *m_document;
    bool m_isLoaded = false;
};

/// Gathers the items of an outline one by one, each guarded on its own: MuPDF gives up the whole for one bad
/// destination and for a loop, which real documents have.
class OutlineWalk
{
public:
    OutlineWalk(fz_context *context, const Destinations &destinations)
        : m_context(context)
        , m_destinations(destinations)
    {
    }

    std::vector<OutlineEntry> gathered(pdf_obj *root)
    {
        for (ObjectHandle item = linked(root, PDF_NAME(First)); item; item = following(std::move(item))) {
            if (m_entries.size() == kMaxOutlineItems)
                break;
            m_entries.push_back({static_cast<std::uint32_t>(m_ancestors.size()), labelOf(item.get()),
                                 m_destinations.targetOf(item.get())});
        }
        return std::move(m_entries);
    }

private:
    /// The item below `item`, else the one beside it, else the one beside the nearest ancestor that has one.
    ObjectHandle following(ObjectHandle item)
    {
        if (m_ancestors.size() + 1 < kMaxOutlineDepth) {
            if (ObjectHandle below = linked(item.get(), PDF_NAME(First))) {
                m_ancestors.push_back(std::move(item));
                return below;
            }
        }
        while (true) {
            if (ObjectHandle beside = linked(item.get(), PDF_NAME(Next)))
                return beside;
            if (m_ancestors.empty())
                return nullptr;
            item = std::move(m_ancestors.back());
            m_ancestors.pop_back();
        }
    }

    /// The item to which an entry of `item` refers; none when it has been reached before, so that walks in
    /// circles end.
    ObjectHandle linked(pdf_obj *item, pdf_obj *key)
    {
        ObjectHandle found = keptDictionary(m_context, item, key);
        // An item that is written inside another has no number and cannot be reached twice.
        const int number = pdf_to_num(m_context, found.get());
        return number == 0 || m_reached.insert(number).second ? std::move(found) : nullptr;
    }

    std::optional<std::string> labelOf(pdf_obj *item)
    {
        const std::optional<std::string_view> title =
            stringBytes(m_context, [&] { return pdf_dict_get(m_context, item, PDF_NAME(Title)); });
        std::string label = title ? labelText(*title) : std::string();
        return label.empty() ? std::nullopt : std::optional(std::move(label));
    }

    fz_context *m_context;
    const Destinations &m_destinations;
    std::vector<ObjectHandle> m_ancestors;
    std::unordered_set<int> m_reached;
    std::vector<OutlineEntry> m_entries;
};
} // namespace

Reply outlineOf(fz_context *context, pdf_document *document, int pageCount)
{
    const ObjectHandle root = kept(
        context, [&] { return pdf_dict_getp(context, pdf_trailer(context, document), "Root/Outlines"); });
    const PageMap pages(context, document, root ? pageCount : 0);
    const Destinations destinations(context, document, pageCount);
    return OutlineReply{OutlineWalk(context, destinations).gathered(root.get())};
}
