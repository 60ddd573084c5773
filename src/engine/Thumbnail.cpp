#include "engine/Thumbnail.h"

#include "engine/Guarded.h"
#include "engine/Handles.h"
#include "engine/PageFailure.h"
#include "pdf/protocol/Limits.h"

#include <algorithm>
#include <cmath>

namespace
{
struct Size {
    int width;
    int height;
};

/// The art box in the coordinates of the drawn page, which begin at the upper left after rotation.
fz_rect artBoxOf(fz_context *context, pdf_page *page, fz_matrix toPage)
{
    pdf_obj *mediaEntry = pdf_dict_get_inheritable(context, page->obj, PDF_NAME(MediaBox));
    const fz_rect media = pdf_to_rect(context, mediaEntry);
    fz_rect art = pdf_dict_get_rect(context, page->obj, PDF_NAME(ArtBox));
    if (!fz_is_empty_rect(media))
        art = fz_intersect_rect(art, media);
    if (fz_is_empty_rect(art))
        return pdf_bound_page(context, page);
    return fz_transform_rect(art, toPage);
}

int side(double points, double scale, std::uint32_t max)
{
    return static_cast<int>(std::clamp(std::round(points * scale), 1.0, double(max)));
}

Size fitted(fz_rect box, const ThumbnailRequest &request)
{
    const double width = double(box.x1) - double(box.x0);
    const double height = double(box.y1) - double(box.y0);
    const double scale = std::min(request.maxWidth / width, request.maxHeight / height);
    return {side(width, scale, request.maxWidth), side(height, scale, request.maxHeight)};
}

fz_matrix placing(fz_rect box, Size size)
{
    const fz_matrix toOrigin = fz_translate(-box.x0, -box.y0);
    const float scaleX = float(size.width / (double(box.x1) - double(box.x0)));
    const float scaleY = float(size.height / (double(box.y1) - double(box.y0)));
    return fz_concat(toOrigin, fz_scale(scaleX, scaleY));
}

PixmapHandle drawn(fz_context *context, pdf_page *page, const ThumbnailRequest &request, fz_cookie *stop,
                   std::optional<CallFailure> &failure)
{
    fz_pixmap *pixmap = nullptr;
    fz_device *device = nullptr;
    failure = guarded(context, [&] {
        fz_rect pageBox;
        fz_matrix toPage;
        pdf_page_transform(context, page, &pageBox, &toPage);
        const fz_rect box = artBoxOf(context, page, toPage);
        if (fz_is_empty_rect(box) || fz_is_infinite_rect(box))
            fz_throw(context, FZ_ERROR_GENERIC, "the page has no size");
        const Size size = fitted(box, request);
        pixmap = fz_new_pixmap(context, fz_device_rgb(context), size.width, size.height, nullptr, 0);
        fz_clear_pixmap_with_value(context, pixmap, 0xff);
        device = fz_new_draw_device(context, placing(box, size), pixmap);
        pdf_run_page(context, page, device, fz_identity, stop);
        fz_close_device(context, device);
    });
    DeviceHandle(device, {context}).reset();
    return {pixmap, {context}};
}
} // namespace

Reply thumbnailOf(fz_context *context, pdf_page *page, const ThumbnailRequest &request, fz_cookie *stop)
{
    std::optional<CallFailure> failure;
    const PixmapHandle pixmap = drawn(context, page, request, stop, failure);
    if (failure)
        return pageFailure(*failure);
    PictureReply reply;
    reply.width = static_cast<std::uint32_t>(pixmap->w);
    reply.height = static_cast<std::uint32_t>(pixmap->h);
    reply.pixels.reserve(std::size_t(reply.width) * reply.height * kBytesPerPixel);
    for (int row = 0; row < pixmap->h; ++row) {
        const unsigned char *pixels = pixmap->samples + row * pixmap->stride;
        reply.pixels.insert(reply.pixels.end(), pixels, pixels + std::size_t(pixmap->w) * kBytesPerPixel);
    }
    return reply;
}
