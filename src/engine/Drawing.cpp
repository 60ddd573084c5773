#include "engine/Drawing.h"

#include "engine/Darkening.h"
#include "engine/Guarded.h"
#include "engine/Handles.h"
#include "engine/PageCoordinates.h"
#include "engine/PageFailure.h"

namespace
{
constexpr int kAlphaByte = 3;
constexpr int kBytesOfPixel = 4;

/// From the page's points to the pixels of the part that is asked for.
fz_matrix placing(fz_rect bounds, const DrawRequest &request)
{
    const float width = bounds.x1;
    const float height = bounds.y1;
    fz_matrix turned = fz_identity;
    switch (request.turns) {
    case 1:
        turned = fz_make_matrix(0, 1, -1, 0, height, 0);
        break;
    case 2:
        turned = fz_make_matrix(-1, 0, 0, -1, width, height);
        break;
    case 3:
        turned = fz_make_matrix(0, -1, 1, 0, 0, width);
        break;
    default:
        break;
    }
    const fz_matrix scaled = fz_concat(turned, fz_scale(request.scale, request.scale));
    return fz_concat(scaled,
                     fz_translate(-static_cast<float>(request.left), -static_cast<float>(request.top)));
}

/// Paper is opaque, but putting transparent layers together rounds.
void makeOpaque(unsigned char *pixels, const DrawRequest &request)
{
    const std::size_t bytes = std::size_t(request.width) * request.height * kBytesOfPixel;
    for (std::size_t i = kAlphaByte; i < bytes; i += kBytesOfPixel)
        pixels[i] = 0xff;
}
} // namespace

Reply draw(fz_context *context, pdf_page *page, const DrawRequest &request, unsigned char *pixels,
           fz_cookie *stop)
{
    fz_pixmap *pixmap = nullptr;
    fz_device *device = nullptr;
    fz_matrix place = fz_identity;
    const std::optional<CallFailure> failure = guarded(context, [&] {
        place = placing(coordinatesOf(context, page->obj).bounds, request);
        const fz_irect area = {0, 0, static_cast<int>(request.width), static_cast<int>(request.height)};
        pixmap = fz_new_pixmap_with_bbox_and_data(context, fz_device_bgr(context), area, nullptr, 1, pixels);
        fz_clear_pixmap_with_value(context, pixmap, 0xff);
        device = fz_new_draw_device(context, place, pixmap);
        pdf_run_page(context, page, device, fz_identity, stop);
        fz_close_device(context, device);
    });
    DeviceHandle(device, {context}).reset();
    PixmapHandle(pixmap, {context}).reset();
    if (failure)
        return pageFailure(*failure);
    makeOpaque(pixels, request);
    if (request.isDark)
        darken(context, page, place, {pixels, request.width, request.height}, stop);
    return DrawnReply{};
}
