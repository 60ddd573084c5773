#include "engine/Destinations.h"

#include "engine/Kept.h"
#include "engine/PageCoordinates.h"

namespace
{
/// Where the two coordinates of a destination stand in its array, 0 for one that its kind does not have.
struct Places {
    int x = 0;
    int y = 0;
};

Places placesOf(fz_context *context, pdf_obj *kind)
{
    if (pdf_name_eq(context, kind, PDF_NAME(XYZ)))
        return {2, 3};
    if (pdf_name_eq(context, kind, PDF_NAME(FitR)))
        return {2, 5};
    if (pdf_name_eq(context, kind, PDF_NAME(FitH)) || pdf_name_eq(context, kind, PDF_NAME(FitBH)))
        return {0, 2};
    if (pdf_name_eq(context, kind, PDF_NAME(FitV)) || pdf_name_eq(context, kind, PDF_NAME(FitBV)))
        return {2, 0};
    return {};
}

float coordinate(fz_context *context, pdf_obj *destination, int place, float fallback)
{
    pdf_obj *value = place == 0 ? nullptr : pdf_array_get(context, destination, place);
    return pdf_is_number(context, value) ? pdf_to_real(context, value) : fallback;
}

/// The point of the page that a destination names; the page's upper left for what it leaves open.
fz_point pointOf(fz_context *context, pdf_obj *page, pdf_obj *destination)
{
    const PageCoordinates coordinates = coordinatesOf(context, page);
    const Places places = placesOf(context, pdf_array_get(context, destination, 1));
    // Left open is a coordinate of the content, whose upper left is another corner where the page is turned.
    const fz_point corner = fz_transform_point_xy(coordinates.bounds.x0, coordinates.bounds.y0,
                                                  fz_invert_matrix(coordinates.fromContent));
    const fz_point point =
        fz_transform_point_xy(coordinate(context, destination, places.x, corner.x),
                              coordinate(context, destination, places.y, corner.y), coordinates.fromContent);
    const PageBox inside = clipped({point.x, point.y, point.x, point.y}, coordinates.bounds);
    return fz_make_point(inside.left, inside.top);
}
} // namespace

Destinations::Destinations(fz_context *context, pdf_document *document, int pageCount)
    : m_context(context)
    , m_document(document)
    , m_pageCount(pageCount)
{
}

/// The array of an item's destination; null when there is none. Throws MuPDF's errors.
pdf_obj *Destinations::explicitDestination(pdf_obj *item) const
{
    pdf_obj *destination = pdf_dict_get(m_context, item, PDF_NAME(Dest));
    if (!destination) {
        pdf_obj *action = pdf_dict_get(m_context, item, PDF_NAME(A));
        if (!pdf_name_eq(m_context, pdf_dict_get(m_context, action, PDF_NAME(S)), PDF_NAME(GoTo)))
            return nullptr;
        destination = pdf_dict_get(m_context, action, PDF_NAME(D));
    }
    if (pdf_is_name(m_context, destination) || pdf_is_string(m_context, destination))
        destination = pdf_lookup_dest(m_context, m_document, destination);
    // What a name stands for may be wrapped once more.
    if (pdf_is_dict(m_context, destination))
        destination = pdf_dict_get(m_context, destination, PDF_NAME(D));
    return pdf_is_array(m_context, destination) ? destination : nullptr;
}

/// The page that a destination names, by its object or by its number. Throws MuPDF's errors.
int Destinations::pageIndex(pdf_obj *destination) const
{
    pdf_obj *page = pdf_array_get(m_context, destination, 0);
    const int index = pdf_is_int(m_context, page) ? pdf_to_int(m_context, page)
                                                  : pdf_lookup_page_number(m_context, m_document, page);
    if (index < 0 || index >= m_pageCount)
        fz_throw(m_context, FZ_ERROR_GENERIC, "the destination is no page");
    return index;
}

std::optional<PageTarget> Destinations::targetOf(pdf_obj *item) const
{
    const ObjectHandle destination = kept(m_context, [&] { return explicitDestination(item); });
    if (!destination)
        return std::nullopt;
    int index = -1;
    ObjectHandle page = kept(m_context, [&] {
        index = pageIndex(destination.get());
        pdf_obj *named = pdf_array_get(m_context, destination.get(), 0);
        return pdf_is_dict(m_context, named) ? named : nullptr;
    });
    if (!page && index >= 0)
        page = keptPage(m_context, m_document, index);
    fz_point point = {};
    if (!page || guarded(m_context, [&] { point = pointOf(m_context, page.get(), destination.get()); }))
        return std::nullopt;
    return PageTarget{static_cast<std::uint32_t>(index), point.x, point.y};
}
