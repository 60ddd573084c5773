#include "pdf/protocol/Fields.h"
#include "pdf/protocol/Limits.h"

namespace
{
std::uint32_t readPage(Reader &in)
{
    return in.number(kMaxPageCount - 1);
}

std::uint32_t readAtLeastOne(Reader &in, std::uint32_t max)
{
    const std::uint32_t value = in.number(max);
    if (value == 0)
        in.refuse();
    return value;
}
} // namespace

void write(Writer &out, const OpenRequest &message)
{
    out.number(message.version);
    out.optionalText(message.password);
}

void read(Reader &in, OpenRequest &message)
{
    message.version = in.number();
    message.password = in.optionalText(kMaxPasswordBytes);
    // MuPDF would take what stands before the NUL for the whole.
    if (message.password && message.password->find('\0') != std::string::npos)
        in.refuse();
}

void write(Writer &out, const PageTextRequest &message)
{
    out.number(message.page);
}

void read(Reader &in, PageTextRequest &message)
{
    message.page = readPage(in);
}

void write(Writer &out, const ThumbnailRequest &message)
{
    out.number(message.page);
    out.number(message.maxWidth);
    out.number(message.maxHeight);
}

void read(Reader &in, ThumbnailRequest &message)
{
    message.page = readPage(in);
    message.maxWidth = readAtLeastOne(in, kMaxThumbnailSide);
    message.maxHeight = readAtLeastOne(in, kMaxThumbnailSide);
}

void write(Writer &out, const ShapesRequest &message)
{
    out.number(message.firstPage);
    out.number(message.count);
}

void read(Reader &in, ShapesRequest &message)
{
    message.firstPage = readPage(in);
    message.count = readAtLeastOne(in, kMaxShapes);
}

void write(Writer &out, const PlacedTextRequest &message)
{
    out.number(message.page);
}

void read(Reader &in, PlacedTextRequest &message)
{
    message.page = readPage(in);
}

void write(Writer &out, const DrawRequest &message)
{
    out.number(message.page);
    out.coordinate(message.scale);
    for (std::uint32_t value :
         {message.turns, message.isDark, message.left, message.top, message.width, message.height})
        out.number(value);
}

void read(Reader &in, DrawRequest &message)
{
    message.page = readPage(in);
    message.scale = in.coordinate();
    if (message.scale <= 0 || message.scale > kMaxDrawingScale)
        in.refuse();
    message.turns = in.number(3);
    message.isDark = in.number(1);
    message.left = in.number(kMaxDrawingExtent);
    message.top = in.number(kMaxDrawingExtent);
    message.width = readAtLeastOne(in, kMaxDrawingExtent);
    message.height = readAtLeastOne(in, kMaxDrawingExtent);
    if (std::uint64_t(message.width) * message.height > kMaxDrawingPixels)
        in.refuse();
}

void write(Writer &, const OutlineRequest &) {}

void read(Reader &, OutlineRequest &) {}

void write(Writer &out, const LinksRequest &message)
{
    out.number(message.page);
}

void read(Reader &in, LinksRequest &message)
{
    message.page = readPage(in);
}

void write(Writer &, const PageLabelsRequest &) {}

void read(Reader &, PageLabelsRequest &) {}
