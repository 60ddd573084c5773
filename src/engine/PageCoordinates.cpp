#include "engine/PageCoordinates.h"

#include "pdf/protocol/Limits.h"

#include <algorithm>
#include <cmath>

namespace
{
float edge(float value, float min, float max)
{
    return std::isnan(value) ? min : std::clamp(value, min, max);
}
} // namespace

PageCoordinates coordinatesOf(fz_context *context, pdf_obj *page)
{
    PageCoordinates found;
    fz_rect box;
    pdf_page_obj_transform(context, page, &box, &found.fromContent);
    found.bounds = fz_transform_rect(box, found.fromContent);
    const float width = found.bounds.x1 - found.bounds.x0;
    const float height = found.bounds.y1 - found.bounds.y0;
    if (!(width > 0 && width <= kMaxCoordinate && height > 0 && height <= kMaxCoordinate))
        fz_throw(context, FZ_ERROR_GENERIC, "the page has no size");
    return found;
}

PageBox clipped(fz_rect box, fz_rect bounds)
{
    const float left = edge(box.x0, bounds.x0, bounds.x1);
    const float top = edge(box.y0, bounds.y0, bounds.y1);
    return {left, top, edge(box.x1, left, bounds.x1), edge(box.y1, top, bounds.y1)};
}

PageBox limited(fz_rect box)
{
    return clipped(box, {-kMaxCoordinate, -kMaxCoordinate, kMaxCoordinate, kMaxCoordinate});
}
