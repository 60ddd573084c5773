#include "engine/PageTree.h"

#include <algorithm>
#include <unordered_set>

namespace
{
// Chosen: real trees have some ten levels at most, and MuPDF can guard calls only some 200 deep.
constexpr int kMaxDepth = 64;

// Chosen: no printed work comes near, and a tree of so many costs some megabytes.
constexpr int kMaxKids = 1'000'000;

/// Gathers the pages of a tree whatever it claims, in their order.
class PageWalk
{
public:
    PageWalk(fz_context *context, pdf_obj *pages)
        : m_context(context)
        , m_pages(pages)
    {
    }

    /// Whatever of the children of `node` can be had; one that cannot is lost alone.
    void addKidsOf(pdf_obj *node, int depth)
    {
        pdf_obj *kids = nullptr;
        (void)guarded(m_context, [&] {
            // Kept, for a repair of the document on the way drops what it had read.
            if (depth == kMaxDepth || !isNew(node))
                return;
            kids = pdf_keep_obj(m_context, pdf_dict_get(m_context, node, PDF_NAME(Kids)));
            const int count = pdf_array_len(m_context, kids);
            for (int i = 0; i < count && m_seen < kMaxKids; ++i, ++m_seen)
                add(pdf_array_get(m_context, kids, i), depth);
        });
        pdf_drop_obj(m_context, kids);
    }

private:
    void add(pdf_obj *kid, int depth)
    {
        (void)guarded(m_context, [&] {
            if (isNode(kid))
                addKidsOf(kid, depth + 1);
            else if (pdf_is_dict(m_context, kid))
                pdf_array_push(m_context, m_pages, kid);
        });
    }

    bool isNode(pdf_obj *kid)
    {
        pdf_obj *type = pdf_dict_get(m_context, kid, PDF_NAME(Type));
        if (pdf_is_name(m_context, type))
            return pdf_name_eq(m_context, type, PDF_NAME(Pages));
        return pdf_is_array(m_context, pdf_dict_get(m_context, kid, PDF_NAME(Kids)));
    }

    /// Nodes are entered once, or trees that go in circles would have pages without end. One that is written
    /// inside its parent has no number and cannot be reached twice.
    bool isNew(pdf_obj *node)
    {
        const int number = pdf_to_num(m_context, node);
        return number == 0 || m_entered.insert(number).second;
    }

    fz_context *m_context;
    pdf_obj *m_pages;
    std::unordered_set<int> m_entered;
    int m_seen = 0;
};

pdf_obj *rootOf(fz_context *context, pdf_document *document)
{
    return pdf_dict_getp(context, pdf_trailer(context, document), "Root/Pages");
}

void flatten(fz_context *context, pdf_document *document, pdf_obj *pages)
{
    pdf_obj *root = rootOf(context, document);
    const int count = pdf_array_len(context, pages);
    if (count == 0)
        fz_throw(context, FZ_ERROR_GENERIC, "no page of it can be found");
    pdf_dict_put(context, root, PDF_NAME(Kids), pages);
    pdf_dict_put_int(context, root, PDF_NAME(Count), count);
}

/// Whether the tree says itself that there is nothing in it. A repaired document that does has lost its
/// pages.
bool isEmptyTree(fz_context *context, pdf_document *document)
{
    pdf_obj *kids = pdf_dict_get(context, rootOf(context, document), PDF_NAME(Kids));
    return pdf_is_array(context, kids) && pdf_array_len(context, kids) == 0 &&
           !pdf_was_repaired(context, document);
}
} // namespace

std::optional<CallFailure> countPages(fz_context *context, pdf_document *document, int &count)
{
    pdf_obj *pages = nullptr;
    bool isSettled = false;
    std::optional<CallFailure> failure = guarded(context, [&] {
        count = pdf_count_pages(context, document);
        isSettled = count > 0 || isEmptyTree(context, document);
        count = std::max(count, 0);
        if (!isSettled)
            pages = pdf_new_array(context, document, 1);
    });
    if (!failure && !isSettled) {
        PageWalk walk(context, pages);
        failure = guarded(context, [&] {
            walk.addKidsOf(rootOf(context, document), 0);
            flatten(context, document, pages);
            count = pdf_array_len(context, pages);
        });
    }
    pdf_drop_obj(context, pages);
    return failure;
}
