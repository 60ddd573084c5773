#include "engine/PictureAreas.h"

#include "engine/Guarded.h"
#include "engine/Handles.h"

#include <array>

namespace
{
// Chosen: what is cut into more pieces is drawn from them like from strokes.
constexpr int kMaxPictures = 4096;

/// Notes images and knows nothing else. MuPDF makes it, as its devices are made: without a constructor.
struct PictureDevice {
    fz_device super;
    fz_irect area;
    int hiddenDepth; ///< in how many patterns and masks the page just is
    int count;
    std::array<fz_irect, kMaxPictures> pictures;
};

PictureDevice *pictureDevice(fz_device *device)
{
    return reinterpret_cast<PictureDevice *>(device);
}

void noteImage(fz_context *context, fz_device *device, fz_image *image, fz_matrix place, float,
               fz_color_params)
{
    PictureDevice *pictures = pictureDevice(device);
    if (image->bpc == 1 || pictures->hiddenDepth > 0 || pictures->count == kMaxPictures)
        return;
    const fz_rect seen =
        fz_intersect_rect(fz_transform_rect(fz_unit_rect, place), fz_device_current_scissor(context, device));
    const fz_irect pixels = fz_intersect_irect(fz_irect_from_rect(seen), pictures->area);
    if (!fz_is_empty_irect(pixels))
        pictures->pictures[static_cast<std::size_t>(pictures->count++)] = pixels;
}

void beginMask(fz_context *, fz_device *device, fz_rect, int, fz_colorspace *, const float *, fz_color_params)
{
    ++pictureDevice(device)->hiddenDepth;
}

void endMask(fz_context *, fz_device *device)
{
    --pictureDevice(device)->hiddenDepth;
}

int beginTile(fz_context *, fz_device *device, fz_rect, fz_rect, float, float, fz_matrix, int)
{
    ++pictureDevice(device)->hiddenDepth;
    return 0;
}

void endTile(fz_context *, fz_device *device)
{
    --pictureDevice(device)->hiddenDepth;
}

fz_device *newPictureDevice(fz_context *context, fz_irect area)
{
    auto *device = reinterpret_cast<PictureDevice *>(fz_new_device_of_size(context, sizeof(PictureDevice)));
    device->area = area;
    device->super.fill_image = noteImage;
    device->super.begin_mask = beginMask;
    device->super.end_mask = endMask;
    device->super.begin_tile = beginTile;
    device->super.end_tile = endTile;
    return &device->super;
}
} // namespace

std::vector<fz_irect> pictureAreasOf(fz_context *context, pdf_page *page, fz_matrix place, fz_irect area,
                                     fz_cookie *stop)
{
    fz_device *device = nullptr;
    (void)guarded(context, [&] {
        device = newPictureDevice(context, area);
        pdf_run_page(context, page, device, place, stop);
        fz_close_device(context, device);
    });
    const DeviceHandle keeper(device, {context});
    if (!device)
        return {};
    const PictureDevice *noted = pictureDevice(device);
    return {noted->pictures.begin(), noted->pictures.begin() + noted->count};
}
