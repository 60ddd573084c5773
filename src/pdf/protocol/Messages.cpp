#include "pdf/protocol/Messages.h"

#include "pdf/protocol/CleanText.h"
#include "pdf/protocol/Limits.h"
#include "pdf/protocol/Reader.h"
#include "pdf/protocol/Writer.h"

#include <algorithm>
#include <type_traits>

namespace
{
void write(Writer &out, const OpenRequest &message)
{
    out.number(message.version);
}

void write(Writer &out, const PageTextRequest &message)
{
    out.number(message.page);
}

void write(Writer &out, const ThumbnailRequest &message)
{
    out.number(message.page);
    out.number(message.maxWidth);
    out.number(message.maxHeight);
}

void write(Writer &out, const OpenedReply &message)
{
    out.number(message.version);
    out.number(message.pageCount);
    out.optionalText(message.title);
    out.optionalText(message.author);
}

void write(Writer &out, const TextReply &message)
{
    out.text(message.text);
}

void write(Writer &out, const PictureReply &message)
{
    out.number(message.width);
    out.number(message.height);
    out.bytes(message.pixels);
}

void write(Writer &out, const FailedReply &message)
{
    out.number(static_cast<std::uint32_t>(message.failure));
    out.text(message.reason);
}

void read(Reader &in, OpenRequest &message)
{
    message.version = in.number();
}

void read(Reader &in, PageTextRequest &message)
{
    message.page = in.number(kMaxPageCount - 1);
}

std::uint32_t readSide(Reader &in)
{
    const std::uint32_t side = in.number(kMaxThumbnailSide);
    if (side == 0)
        in.refuse();
    return side;
}

void read(Reader &in, ThumbnailRequest &message)
{
    message.page = in.number(kMaxPageCount - 1);
    message.maxWidth = readSide(in);
    message.maxHeight = readSide(in);
}

std::optional<std::string> readAttribute(Reader &in)
{
    std::optional<std::string> text = in.optionalText(kMaxAttributeBytes);
    if (text && !isCleanAttribute(*text))
        in.refuse();
    return text;
}

void read(Reader &in, OpenedReply &message)
{
    message.version = in.number();
    message.pageCount = in.number(kMaxPageCount);
    message.title = readAttribute(in);
    message.author = readAttribute(in);
}

void read(Reader &in, TextReply &message)
{
    message.text = in.text(kMaxPageTextBytes);
}

/// Of a picture whose sides are at most `kMaxThumbnailSide`.
std::uint32_t pictureBytes(std::uint32_t width, std::uint32_t height)
{
    return width * height * kBytesPerPixel;
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

void read(Reader &in, FailedReply &message)
{
    const std::uint32_t failure = in.number(static_cast<std::uint32_t>(Failure::Unable));
    if (failure == 0)
        in.refuse();
    message.failure = static_cast<Failure>(failure);
    message.reason = in.text(kMaxReasonBytes);
}

std::uint32_t maxWantedBytes(const OpenRequest &)
{
    return kMaxOpenedReplyBytes;
}

std::uint32_t maxWantedBytes(const PageTextRequest &)
{
    return kMaxTextReplyBytes;
}

std::uint32_t maxWantedBytes(const ThumbnailRequest &request)
{
    return pictureBytes(request.maxWidth, request.maxHeight) + kMaxNumbersBytes;
}

template <typename Message>
std::vector<std::uint8_t> encodedMessage(std::uint32_t requestNumber, const Message &message)
{
    Writer out;
    out.number(0);
    out.number(static_cast<std::uint32_t>(Message::kKind));
    out.number(requestNumber);
    write(out, message);
    out.replaceNumber(0, static_cast<std::uint32_t>(out.size() - kHeaderBytes));
    return out.take();
}

template <typename Variant>
std::vector<std::uint8_t> encodedVariant(std::uint32_t requestNumber, const Variant &variant)
{
    return std::visit([requestNumber](const auto &message) { return encodedMessage(requestNumber, message); },
                      variant);
}

/// Tries the message types of `Variant` from the one at `index` on.
template <typename Variant, std::size_t index = 0>
std::optional<Variant> decodedVariant(MessageKind kind, std::span<const std::uint8_t> payload)
{
    if constexpr (index == std::variant_size_v<Variant>) {
        return std::nullopt;
    } else {
        using Message = std::variant_alternative_t<index, Variant>;
        if (kind != Message::kKind)
            return decodedVariant<Variant, index + 1>(kind, payload);
        Reader in(payload);
        Message message;
        read(in, message);
        return in.isWhole() ? std::optional<Variant>(std::move(message)) : std::nullopt;
    }
}
} // namespace

std::vector<std::uint8_t> encoded(std::uint32_t requestNumber, const Request &request)
{
    return encodedVariant(requestNumber, request);
}

std::vector<std::uint8_t> encoded(std::uint32_t requestNumber, const Reply &reply)
{
    return encodedVariant(requestNumber, reply);
}

std::uint32_t maxReplyBytes(const Request &request)
{
    const std::uint32_t wanted =
        std::visit([](const auto &message) { return maxWantedBytes(message); }, request);
    return std::max(wanted, kMaxFailedReplyBytes);
}

std::optional<MessageHeader> decodedHeader(std::span<const std::uint8_t, kHeaderBytes> bytes,
                                           std::uint32_t maxPayloadBytes)
{
    Reader in(bytes);
    MessageHeader header;
    header.payloadBytes = in.number(maxPayloadBytes);
    header.kind = static_cast<MessageKind>(in.number());
    header.request = in.number();
    return in.isWhole() ? std::optional(header) : std::nullopt;
}

std::optional<Request> decodedRequest(MessageKind kind, std::span<const std::uint8_t> payload)
{
    return decodedVariant<Request>(kind, payload);
}

std::optional<Reply> decodedReply(MessageKind kind, std::span<const std::uint8_t> payload)
{
    return decodedVariant<Reply>(kind, payload);
}
