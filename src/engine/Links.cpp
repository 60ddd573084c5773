#include "engine/Links.h"

#include "engine/Destinations.h"
#include "engine/Kept.h"
#include "engine/PageCoordinates.h"
#include "engine/PageFailure.h"
#include "pdf/protocol/Limits.h"
#include "pdf/protocol/WebAddress.h"

namespace
{
// Corners of the quadrilaterals in which a link over several lines is divided.
constexpr int kNumbersOfQuad = 8;

class LinkGatherer
{
public:
    LinkGatherer(fz_context *context, const PageCoordinates &page, const Destinations &destinations)
        : m_context(context)
        , m_page(page)
        , m_destinations(destinations)
    {
    }

    void add(pdf_obj *annotations, int place)
    {
        const ObjectHandle link = kept(m_context, [&] {
            pdf_obj *annotation = pdf_array_get(m_context, annotations, place);
            return isLink(annotation) ? annotation : nullptr;
        });
        if (!link)
            return;
        LinkEntry entry;
        entry.target = m_destinations.targetOf(link.get());
        if (!entry.target)
            entry.address = addressOf(link.get());
        if (entry.target || !entry.address.empty())
            addWithBoxes(link.get(), entry);
    }

    bool isFull() const { return m_links.size() >= kMaxLinks; }
    std::vector<LinkEntry> take() { return std::move(m_links); }

private:
    bool isLink(pdf_obj *annotation) const
    {
        pdf_obj *kind = pdf_dict_get(m_context, annotation, PDF_NAME(Subtype));
        const int flags = pdf_dict_get_int(m_context, annotation, PDF_NAME(F));
        return pdf_name_eq(m_context, kind, PDF_NAME(Link)) && (flags & PDF_ANNOT_IS_HIDDEN) == 0;
    }

    /// Of the web; empty when the link leads to none.
    std::string addressOf(pdf_obj *link) const
    {
        const std::optional<std::string_view> address = stringBytes(m_context, [&]() -> pdf_obj * {
            pdf_obj *action = pdf_dict_get(m_context, link, PDF_NAME(A));
            pdf_obj *kind = pdf_dict_get(m_context, action, PDF_NAME(S));
            const bool isAddress = pdf_name_eq(m_context, kind, PDF_NAME(URI));
            return isAddress ? pdf_dict_get(m_context, action, PDF_NAME(URI)) : nullptr;
        });
        return address && isWebAddress(*address) ? std::string(*address) : std::string();
    }

    void addWithBoxes(pdf_obj *link, LinkEntry &entry)
    {
        int quads = 0;
        fz_rect whole = fz_empty_rect;
        (void)guarded(m_context, [&] {
            whole = pdf_dict_get_rect(m_context, link, PDF_NAME(Rect));
            pdf_obj *points = pdf_dict_get(m_context, link, PDF_NAME(QuadPoints));
            quads = pdf_array_len(m_context, points) / kNumbersOfQuad;
        });
        bool hasQuad = false;
        for (int i = 0; i < quads && !isFull(); ++i) {
            const fz_rect box = fz_intersect_rect(quadBox(link, i), whole);
            if (!fz_is_empty_rect(box)) {
                addOne(box, entry);
                hasQuad = true;
            }
        }
        if (!hasQuad)
            addOne(whole, entry);
    }

    fz_rect quadBox(pdf_obj *link, int quad) const
    {
        fz_rect box = fz_empty_rect;
        (void)guarded(m_context, [&] {
            pdf_obj *points = pdf_dict_get(m_context, link, PDF_NAME(QuadPoints));
            const auto corner = [&](int number) {
                const int place = quad * kNumbersOfQuad + 2 * number;
                return fz_make_point(pdf_array_get_real(m_context, points, place),
                                     pdf_array_get_real(m_context, points, place + 1));
            };
            box = fz_rect_from_quad({corner(0), corner(1), corner(2), corner(3)});
        });
        return box;
    }

    void addOne(fz_rect box, LinkEntry &entry)
    {
        entry.box = clipped(fz_transform_rect(box, m_page.fromContent), m_page.bounds);
        if (entry.box.left < entry.box.right && entry.box.top < entry.box.bottom && !isFull())
            m_links.push_back(entry);
    }

    fz_context *m_context;
    PageCoordinates m_page;
    const Destinations &m_destinations;
    std::vector<LinkEntry> m_links;
};
} // namespace

Reply linksOf(fz_context *context, pdf_document *document, int pageCount, std::uint32_t pageIndex)
{
    PageCoordinates coordinates = {};
    pdf_obj *annotations = nullptr;
    int count = 0;
    const std::optional<CallFailure> failure = guarded(context, [&] {
        pdf_obj *page = pdf_lookup_page_obj(context, document, static_cast<int>(pageIndex));
        coordinates = coordinatesOf(context, page);
        annotations = pdf_keep_obj(context, pdf_dict_get(context, page, PDF_NAME(Annots)));
        count = pdf_array_len(context, annotations);
    });
    const ObjectHandle keeper(annotations, {context});
    if (failure)
        return pageFailure(*failure);
    const Destinations destinations(context, document, pageCount);
    LinkGatherer links(context, coordinates, destinations);
    for (int i = 0; i < count && !links.isFull(); ++i)
        links.add(annotations, i);
    return LinksReply{links.take()};
}
