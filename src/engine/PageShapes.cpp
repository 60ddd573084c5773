#include "engine/PageShapes.h"

#include "engine/Kept.h"
#include "engine/PageCoordinates.h"

#include <algorithm>

namespace
{
/// Steps through the pages of a document in their order. MuPDF finds each from the root of the page tree,
/// past every page before it when the tree is flat; most often the next one is just the next child.
class PageSteps
{
public:
    PageSteps(fz_context *context, pdf_document *document)
        : m_context(context)
        , m_document(document)
    {
    }

    /// Most quickly the page after the one asked for last. Nothing when it cannot be had.
    ObjectHandle page(int index)
    {
        ObjectHandle page = index == m_index + 1 ? nextSibling() : nullptr;
        if (!page)
            page = looked(index);
        m_index = index;
        return page;
    }

private:
    ObjectHandle nextSibling()
    {
        ++m_place;
        return kept(m_context, [&] {
            pdf_obj *kid = pdf_array_get(m_context, m_siblings.get(), m_place);
            pdf_obj *type = pdf_dict_get(m_context, kid, PDF_NAME(Type));
            return pdf_name_eq(m_context, type, PDF_NAME(Page)) ? kid : nullptr;
        });
    }

    ObjectHandle looked(int index)
    {
        ObjectHandle page = keptPage(m_context, m_document, index);
        m_siblings = kept(m_context, [&] {
            pdf_obj *parent = pdf_dict_get(m_context, page.get(), PDF_NAME(Parent));
            pdf_obj *kids = pdf_dict_get(m_context, parent, PDF_NAME(Kids));
            m_place = pdf_array_find(m_context, kids, page.get());
            return m_place < 0 ? nullptr : kids;
        });
        return page;
    }

    fz_context *m_context;
    pdf_document *m_document;
    ObjectHandle m_siblings; ///< the children among which the last page is, at `m_place`
    int m_place = 0;
    int m_index = -1;
};

/// A box of the page, `fallback` where it has none.
fz_rect boxOf(fz_context *context, pdf_obj *page, pdf_obj *name, const PageCoordinates &coordinates,
              fz_rect fallback)
{
    const fz_rect box = pdf_to_rect(context, pdf_dict_get_inheritable(context, page, name));
    return fz_is_empty_rect(box) ? fallback : fz_transform_rect(box, coordinates.fromContent);
}

std::uint32_t turnsOf(fz_context *context, pdf_obj *page)
{
    const int degrees = pdf_to_int(context, pdf_dict_get_inheritable(context, page, PDF_NAME(Rotate)));
    // MuPDF rounds what is no quarter to the nearest one.
    const int turns = (degrees % 360 + 360 + 45) / 90;
    return static_cast<std::uint32_t>(turns % 4);
}

PageShape shapeOf(fz_context *context, pdf_obj *page)
{
    const PageCoordinates coordinates = coordinatesOf(context, page);
    const fz_rect bounds = coordinates.bounds;
    const auto box = [&](pdf_obj *name) {
        return limited(boxOf(context, page, name, coordinates, bounds));
    };
    return {bounds.x1 - bounds.x0,   bounds.y1 - bounds.y0,  turnsOf(context, page), box(PDF_NAME(MediaBox)),
            box(PDF_NAME(BleedBox)), box(PDF_NAME(TrimBox)), box(PDF_NAME(ArtBox))};
}
} // namespace

Reply shapesOf(fz_context *context, pdf_document *document, int pageCount, const ShapesRequest &request)
{
    const std::int64_t first = request.firstPage;
    const std::int64_t end = std::min<std::int64_t>(first + request.count, pageCount);
    PageSteps pages(context, document);
    ShapesReply reply;
    for (std::int64_t index = first; index < end; ++index) {
        const ObjectHandle page = pages.page(static_cast<int>(index));
        PageShape shape;
        const bool isKnown = page && !guarded(context, [&] { shape = shapeOf(context, page.get()); });
        reply.shapes.push_back(isKnown ? std::optional(shape) : std::nullopt);
    }
    return reply;
}
