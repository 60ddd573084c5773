#include "pdf/protocol/Messages.h"

#include "pdf/protocol/Fields.h"
#include "pdf/protocol/Limits.h"

#include <algorithm>
#include <type_traits>

namespace
{
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
    return request.maxWidth * request.maxHeight * kBytesPerPixel + kMaxNumbersBytes;
}

std::uint32_t maxWantedBytes(const ShapesRequest &request)
{
    return request.count * kMaxShapeBytes + kMaxNumbersBytes;
}

std::uint32_t maxWantedBytes(const PlacedTextRequest &)
{
    return kMaxPlacedTextReplyBytes;
}

std::uint32_t maxWantedBytes(const DrawRequest &)
{
    return 0;
}

std::uint32_t maxWantedBytes(const OutlineRequest &)
{
    return kMaxOutlineReplyBytes;
}

std::uint32_t maxWantedBytes(const LinksRequest &)
{
    return kMaxLinksReplyBytes;
}

std::uint32_t maxWantedBytes(const PageLabelsRequest &)
{
    return kMaxPageLabelsReplyBytes;
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
