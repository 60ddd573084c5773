#include "engine/Darkening.h"

#include "engine/PictureAreas.h"

#include <algorithm>
#include <vector>

namespace
{
constexpr int kBytesOfPixel = 4;

// The shares of the colours in lightness (ITU-R BT.709), of 256.
constexpr int kRedShare = 54;
constexpr int kGreenShare = 183;
constexpr int kBlueShare = 19;

/// Moves the pixel along the grey axis until its lightness is 255 less what it was. Pure colours reach the
/// end of the scale on the way and become paler: blue on black would be hard to read.
void invert(unsigned char *pixel)
{
    const int lightness = (kBlueShare * pixel[0] + kGreenShare * pixel[1] + kRedShare * pixel[2]) >> 8;
    const int shift = 255 - 2 * lightness;
    for (int i = 0; i < 3; ++i)
        pixel[i] = static_cast<unsigned char>(std::clamp(pixel[i] + shift, 0, 255));
}

void invertRow(unsigned char *row, int first, int end)
{
    for (int x = first; x < end; ++x)
        invert(row + std::ptrdiff_t(x) * kBytesOfPixel);
}

/// Inverts what of row `y` lies in no picture.
void invertAround(const std::vector<fz_irect> &pictures, const DrawnPixels &pixels, int y)
{
    unsigned char *row = pixels.bytes + std::size_t(y) * pixels.width * kBytesOfPixel;
    int x = 0;
    for (const fz_irect &picture : pictures) { // from left to right
        if (y < picture.y0 || y >= picture.y1)
            continue;
        invertRow(row, x, picture.x0);
        x = std::max(x, picture.x1);
    }
    invertRow(row, x, static_cast<int>(pixels.width));
}
} // namespace

void darken(fz_context *context, pdf_page *page, fz_matrix place, const DrawnPixels &pixels, fz_cookie *stop)
{
    const fz_irect area = {0, 0, static_cast<int>(pixels.width), static_cast<int>(pixels.height)};
    std::vector<fz_irect> pictures = pictureAreasOf(context, page, place, area, stop);
    std::sort(pictures.begin(), pictures.end(),
              [](const fz_irect &a, const fz_irect &b) { return a.x0 < b.x0; });
    for (int y = 0; y < area.y1; ++y)
        invertAround(pictures, pixels, y);
}
