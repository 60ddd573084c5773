#include "pdf/EngineRequests.h"

#include "pdf/protocol/Limits.h"

namespace
{
std::uint32_t pixels(int side)
{
    return std::uint32_t(qBound(1, side, int(kMaxThumbnailSide)));
}

std::uint32_t turnsOf(int degrees)
{
    return std::uint32_t((degrees / 90 % 4 + 4) % 4);
}

bool isWithin(int value, int least)
{
    return value >= least && value <= int(kMaxDrawingExtent);
}

bool isSound(const PDFDrawing &drawing)
{
    const QRect &clip = drawing.clip;
    const float scale = float(drawing.scale); // too small a number is nothing in a message
    return scale > 0 && scale <= kMaxDrawingScale && isWithin(clip.x(), 0) && isWithin(clip.y(), 0) &&
           isWithin(clip.width(), 1) && isWithin(clip.height(), 1) &&
           qint64(clip.width()) * clip.height() <= qint64(kMaxDrawingPixels);
}
} // namespace

std::optional<std::uint32_t> pageNumber(qint64 index)
{
    if (index < 0 || index >= qint64(kMaxPageCount))
        return std::nullopt;
    return std::uint32_t(index);
}

std::optional<OpenRequest> openRequest(const std::optional<QString> &password)
{
    OpenRequest request = {kProtocolVersion, std::nullopt};
    if (!password)
        return request;
    request.password = password->toStdString();
    const bool isSound = !password->contains(u'\0') && request.password->size() <= kMaxPasswordBytes;
    return isSound ? std::optional(request) : std::nullopt;
}

ThumbnailRequest thumbnailRequest(std::uint32_t page, int maxWidth, int maxHeight)
{
    return {page, pixels(maxWidth), pixels(maxHeight)};
}

std::optional<DrawRequest> drawRequest(std::uint32_t page, const PDFDrawing &drawing)
{
    if (!isSound(drawing))
        return std::nullopt;
    const QRect &clip = drawing.clip;
    return DrawRequest{page,
                       float(drawing.scale),
                       turnsOf(drawing.rotation),
                       drawing.isDark ? 1u : 0u,
                       std::uint32_t(clip.x()),
                       std::uint32_t(clip.y()),
                       std::uint32_t(clip.width()),
                       std::uint32_t(clip.height())};
}
