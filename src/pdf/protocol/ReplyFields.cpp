#include "pdf/protocol/CleanText.h"
#include "pdf/protocol/Fields.h"
#include "pdf/protocol/Limits.h"
#include "pdf/protocol/Utf8.h"
#include "pdf/protocol/WebAddress.h"

namespace
{
void write(Writer &out, const PageBox &box)
{
    for (float edge : {box.left, box.top, box.right, box.bottom})
        out.coordinate(edge);
}

void read(Reader &in, PageBox &box)
{
    box.left = in.coordinate();
    box.top = in.coordinate();
    box.right = in.coordinate();
    box.bottom = in.coordinate();
    if (box.left > box.right || box.top > box.bottom)
        in.refuse();
}

void write(Writer &out, const PageTarget &target)
{
    out.number(target.page);
    out.coordinate(target.x);
    out.coordinate(target.y);
}

void read(Reader &in, PageTarget &target)
{
    target.page = in.number(kMaxPageCount - 1);
    target.x = in.coordinate();
    target.y = in.coordinate();
}

void write(Writer &out, const PageShape &shape)
{
    out.coordinate(shape.width);
    out.coordinate(shape.height);
    out.number(shape.turns);
    for (const PageBox &box : {shape.media, shape.bleed, shape.trim, shape.art})
        write(out, box);
}

void read(Reader &in, PageShape &shape)
{
    shape.width = in.coordinate();
    shape.height = in.coordinate();
    if (shape.width <= 0 || shape.height <= 0)
        in.refuse();
    shape.turns = in.number(3);
    for (PageBox *box : {&shape.media, &shape.bleed, &shape.trim, &shape.art})
        read(in, *box);
}

template <typename Value> void write(Writer &out, const std::optional<Value> &value)
{
    out.number(value ? 1 : 0);
    if (value)
        write(out, *value);
}

template <typename Value> void read(Reader &in, std::optional<Value> &value)
{
    if (in.number(1) == 1)
        read(in, value.emplace());
}

std::optional<std::string> readLabel(Reader &in)
{
    std::optional<std::string> label = in.optionalText(kMaxLabelBytes);
    if (label && !isCleanLabel(*label))
        in.refuse();
    return label;
}

void write(Writer &out, const OutlineEntry &entry)
{
    out.number(entry.depth);
    out.optionalText(entry.label);
    write(out, entry.target);
}

void read(Reader &in, OutlineEntry &entry)
{
    entry.depth = in.number(kMaxOutlineDepth - 1);
    entry.label = readLabel(in);
    read(in, entry.target);
}

void write(Writer &out, const LinkEntry &link)
{
    write(out, link.box);
    write(out, link.target);
    if (!link.target)
        out.text(link.address);
}

void read(Reader &in, LinkEntry &link)
{
    read(in, link.box);
    read(in, link.target);
    if (link.target)
        return;
    link.address = in.text(kMaxAddressBytes);
    if (!isWebAddress(link.address))
        in.refuse();
}

void write(Writer &out, const LabelRange &range)
{
    out.number(range.firstPage);
    out.number(static_cast<std::uint32_t>(range.style));
    out.number(range.firstNumber);
    out.text(range.prefix);
}

void read(Reader &in, LabelRange &range)
{
    range.firstPage = in.number(kMaxPageCount - 1);
    range.style = static_cast<LabelStyle>(in.number(static_cast<std::uint32_t>(LabelStyle::LowerLetters)));
    range.firstNumber = in.number(kMaxPageCount);
    range.prefix = in.text(kMaxLabelBytes);
    if (range.firstNumber == 0 || !isCleanLabel(range.prefix))
        in.refuse();
}

template <typename Item> void write(Writer &out, const std::vector<Item> &items)
{
    out.number(static_cast<std::uint32_t>(items.size()));
    for (const Item &item : items)
        write(out, item);
}

/// Takes room for no more items than the message turns out to hold.
template <typename Item> void read(Reader &in, std::vector<Item> &items, std::uint32_t maxItems)
{
    const std::uint32_t count = in.number(maxItems);
    for (std::uint32_t i = 0; i < count && in.isGood(); ++i)
        read(in, items.emplace_back());
}

std::uint32_t readSide(Reader &in)
{
    const std::uint32_t side = in.number(kMaxThumbnailSide);
    if (side == 0)
        in.refuse();
    return side;
}

std::optional<std::string> readAttribute(Reader &in)
{
    std::optional<std::string> text = in.optionalText(kMaxAttributeBytes);
    if (text && !isCleanAttribute(*text))
        in.refuse();
    return text;
}

/// Of a picture whose sides are at most `kMaxThumbnailSide`.
std::uint32_t pictureBytes(std::uint32_t width, std::uint32_t height)
{
    return width * height * kBytesPerPixel;
}
} // namespace

void write(Writer &out, const OpenedReply &message)
{
    out.number(message.version);
    out.number(message.pageCount);
    out.optionalText(message.title);
    out.optionalText(message.author);
}

void read(Reader &in, OpenedReply &message)
{
    message.version = in.number();
    message.pageCount = in.number(kMaxPageCount);
    message.title = readAttribute(in);
    message.author = readAttribute(in);
}

void write(Writer &out, const TextReply &message)
{
    out.text(message.text);
}

void read(Reader &in, TextReply &message)
{
    message.text = in.text(kMaxPageTextBytes);
}

void write(Writer &out, const PictureReply &message)
{
    out.number(message.width);
    out.number(message.height);
    out.bytes(message.pixels);
}

void read(Reader &in, PictureReply &message)
{
    message.width = readSide(in);
    message.height = readSide(in);
    const std::span<const std::uint8_t> pixels = in.bytes(pictureBytes(kMaxThumbnailSide, kMaxThumbnailSide));
    if (pixels.size() != pictureBytes(message.width, message.height))
        in.refuse();
    message.pixels.assign(pixels.begin(), pixels.end());
}

void write(Writer &out, const ShapesReply &message)
{
    write(out, message.shapes);
}

void read(Reader &in, ShapesReply &message)
{
    read(in, message.shapes, kMaxShapes);
}

void write(Writer &out, const PlacedTextReply &message)
{
    out.text(message.text);
    for (const PageBox &box : message.boxes)
        write(out, box);
}

void read(Reader &in, PlacedTextReply &message)
{
    message.text = in.text(kMaxPageTextBytes);
    for (std::size_t left = characterCount(message.text); left > 0 && in.isGood(); --left)
        read(in, message.boxes.emplace_back());
}

void write(Writer &, const DrawnReply &) {}

void read(Reader &, DrawnReply &) {}

void write(Writer &out, const OutlineReply &message)
{
    write(out, message.entries);
}

void read(Reader &in, OutlineReply &message)
{
    read(in, message.entries, kMaxOutlineItems);
    std::uint32_t deepest = 0;
    for (const OutlineEntry &entry : message.entries) {
        if (entry.depth > deepest)
            in.refuse();
        deepest = entry.depth + 1;
    }
}

void write(Writer &out, const LinksReply &message)
{
    write(out, message.links);
}

void read(Reader &in, LinksReply &message)
{
    read(in, message.links, kMaxLinks);
}

void write(Writer &out, const PageLabelsReply &message)
{
    write(out, message.ranges);
}

void read(Reader &in, PageLabelsReply &message)
{
    read(in, message.ranges, kMaxLabelRanges);
    for (std::size_t i = 1; i < message.ranges.size(); ++i) {
        if (message.ranges[i].firstPage <= message.ranges[i - 1].firstPage)
            in.refuse();
    }
}

void write(Writer &out, const FailedReply &message)
{
    out.number(static_cast<std::uint32_t>(message.failure));
    out.text(message.reason);
}

void read(Reader &in, FailedReply &message)
{
    const std::uint32_t failure = in.number(static_cast<std::uint32_t>(Failure::Stopped));
    if (failure == 0)
        in.refuse();
    message.failure = static_cast<Failure>(failure);
    message.reason = in.text(kMaxReasonBytes);
}
